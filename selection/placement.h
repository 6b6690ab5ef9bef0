#ifndef SELECTION_PLACEMENT_H_
#define SELECTION_PLACEMENT_H_

#include "platform/framework/string.h"

namespace zephin {

/// The folders for the content of an archive. The expansion deletes its folder first, so an archive
/// is never expanded into a folder that exists: its content is expanded into a temporary folder
/// beside that one and then moved.
struct Placement {
  String extractFolder;  ///< For the expansion.
  String mergeFolder;    ///< Where the content is then moved; empty if it is in place already.
};

/// The placement for the present state of the disk. `folder` is a folder inside `target`; the name
/// of the target itself, in any letter case, means the target. The temporary folder's name ends
/// with `suffix`, "_Choice" or "_Option".
Placement PlaceOf(const String& target, const String& folder, const String& suffix);

/// Moves each item directly in the extract folder into the merge folder, then deletes the extract
/// folder with what couldn't be moved. An existing file or empty folder of the same name is
/// replaced. A folder that isn't empty stays, and the archive's folder of that name is lost,
/// without a message. Does nothing if there is no merge folder.
void Merge(const Placement& placement);

}  // namespace zephin

#endif  // SELECTION_PLACEMENT_H_
