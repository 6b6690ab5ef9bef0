#ifndef TOOLS_MAKE_SETUP_LISTS_H_
#define TOOLS_MAKE_SETUP_LISTS_H_

#include <string>
#include <vector>

// The record's lists of choices, options and commands. None of them has an escape for its
// separators, so a text that holds one throws SetupError.

namespace zephin::make_setup {

/// One choice or option. In the record "caption,source,folder,tip", with "|" between entries:
///
///   "Light,light.zip,Themes,Dark ink on white|Dark,dark.zip,Themes,"
struct Selection {
  std::string caption;
  /// Name of an archive in the bundle, or, for an option, its address.
  std::string source;
  /// The folder in the target folder that receives the archive's content.
  std::string folder;
  /// Shown when the pointer rests on the entry. May be empty.
  std::string tip;
};

std::string SelectionList(const std::vector<Selection>& entries);

enum class CopyVerb { Copy, Delete, AllUsersFullAccess, PreInstallDelete, PreInstallCopy };
enum class CopyCondition { None, FolderExists, NothingThere };

/// One command of the copy list; the list has "|" between them. By verb and condition:
///
///   Copy                 "item=destination", "item=[folder]destination", "item={destination}"
///   Delete               "delete=path"
///   AllUsersFullAccess   "allusersfullaccess=path"
///   PreInstallDelete     "preinstalldelete=path"
///   PreInstallCopy       "preinstallcopy=path;destination"
struct CopyCommand {
  CopyVerb verb = CopyVerb::Copy;
  /// Of a copy: below the target folder. Else a full path, which before the install can't begin
  /// with "UserAccount/".
  std::string path;
  /// Where a copy goes: a full path, after the install one that may begin with "UserAccount/".
  std::string destination;
  CopyCondition condition = CopyCondition::None;
  /// The folder of FolderExists.
  std::string conditionFolder;
};

/// Refuses empty paths and such as the stub would take for nothing or for another command, too.
std::string CopyList(const std::vector<CopyCommand>& commands);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_LISTS_H_
