#ifndef SETUP_LISTS_H_
#define SETUP_LISTS_H_

#include <array>
#include <vector>

#include "platform/framework/string.h"

/// The lists of choices and of options: entries "caption,source,folder,tip" between "|". Neither
/// separator can be escaped, parts that are missing are empty, and no entry is rejected:
///
///   Small,/src/small.zip,Data,Less on disk|Full,/src/full.zip,Data
namespace zephin {

inline constexpr const char* kSelectionSeparator = "|";
inline constexpr const char* kSelectionPartSeparator = ",";
/// A source of an option that begins so, in any letter case, is an address to download from.
inline constexpr const char* kAddressBeginning = "http";

/// One choice or option as the publisher describes it. Any part may be empty.
struct SelectionEntry {
  String caption;  ///< Shown to the user, and what names the entry once it is picked.
  String source;   ///< Path of which the last part names an archive in the bundle's Resources
                   ///< folder; for an option also an address.
  String folder;   ///< Folder inside the target folder that receives the archive's content.
  String tip;      ///< Help tag of its row.
};

/// All entries in their order. The empty list has none.
std::vector<SelectionEntry> ReadSelectionList(const String& list);

// The copy list: commands "key=value" between "|", obeyed in their order. No separator can be
// escaped, and what follows a second "=" is dropped. A key that is none of the keywords, in any
// letter case, names an item of the target folder that is copied to the value:
//
//   Docs/Readme.txt=UserAccount/Desktop/Readme.txt     copy after the install
//   Tools=[/Library/Widgets]/Library/Widgets/Tools     only if that folder exists
//   sample.cfg={UserAccount/Library/sample.cfg}        only if nothing exists there
//   delete=UserAccount/Library/old.cfg                 delete after the install
//   allusersfullaccess=/Library/Widgets/Tools          give all users all rights
//   preinstalldelete=/Applications/OldApp              delete before the install
//   preinstallcopy=/Library/a.cfg;/Users/Shared/a.cfg  copy before it, if nothing exists there

enum class CopyVerb {
  Copy,
  Delete,
  AllUsersFullAccess,
  PreInstallDelete,
  PreInstallCopy,
  Malformed,  ///< A command after the install without its key or its value.
};

enum class CopyCondition { None, FolderExists, NothingThere };

struct CopyKeyword {
  CopyVerb verb;
  const char* text;
};

/// Keys with a meaning of their own. An item of such a name can't be copied.
inline constexpr std::array kCopyKeywords{
    CopyKeyword{CopyVerb::Delete, "delete"},
    CopyKeyword{CopyVerb::AllUsersFullAccess, "allusersfullaccess"},
    CopyKeyword{CopyVerb::PreInstallDelete, "preinstalldelete"},
    CopyKeyword{CopyVerb::PreInstallCopy, "preinstallcopy"},
};

inline constexpr const char* kCopySeparator = "|";
inline constexpr const char* kCopyValueSeparator = "=";
inline constexpr const char* kCopyPairSeparator = ";";  ///< In a value of "preinstallcopy".

/// One command. Paths are as the publisher wrote them, "UserAccount/" included; any may be empty.
struct CopyCommand {
  CopyVerb verb = CopyVerb::Copy;
  String path;  ///< What is copied (of a `Copy` below the target folder), deleted, opened.
  String destination = {};                        ///< Of the two copies, else empty.
  CopyCondition condition = CopyCondition::None;  ///< Of a `Copy`.
  String conditionFolder = {};                    ///< Of `FolderExists`.
};

/// All commands in their order. The empty list has none.
std::vector<CopyCommand> ReadCopyList(const String& list);

}  // namespace zephin

#endif  // SETUP_LISTS_H_
