#ifndef SELECTION_SELECTION_LIST_H_
#define SELECTION_SELECTION_LIST_H_

#include <vector>

#include "platform/framework/string.h"

namespace zephin {

/// One choice or option as the publisher describes it. Any part may be empty.
struct SelectionEntry {
  String caption;  ///< Shown to the user; what was picked is handed on by it.
  String source;   ///< A publisher's path, of which the last part names an archive in the bundle's
                   ///< Resources folder; for an option that begins with "http", an address.
  String folder;   ///< Folder inside the target folder that receives the archive's content.
  String tip;      ///< Help tag of its row.
};

/// Reads a list of entries "caption,source,folder,tip" between "|". There is no escape for either
/// separator, and no entry is rejected. For instance
/// "Small,/src/small.zip,Data,Less on disk|Full,/src/full.zip,Data".
std::vector<SelectionEntry> ReadSelectionList(const String& list);

}  // namespace zephin

#endif  // SELECTION_SELECTION_LIST_H_
