#ifndef SETUP_SELECTION_LIST_H_
#define SETUP_SELECTION_LIST_H_

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

}  // namespace zephin

#endif  // SETUP_SELECTION_LIST_H_
