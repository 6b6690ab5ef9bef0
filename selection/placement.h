#ifndef SELECTION_PLACEMENT_H_
#define SELECTION_PLACEMENT_H_

#include "platform/framework/string.h"

namespace zephin {

/// Where an archive's content goes. It is never expanded over a folder that stands already, since
/// the expansion clears its folder first: it goes into a temporary one beside it and is merged.
struct Placement {
  String extractFolder;  ///< Receives the archive's content.
  String mergeFolder;    ///< Into which that is then moved; empty if it is in its place already.
};

/// Decides by what stands on the disk now. `folder` is the publisher's name of a folder inside
/// `target`; the target's own name, in any letter case, stands for the target itself. `suffix`
/// marks the temporary folder: "_Choice" or "_Option".
Placement PlaceOf(const String& target, const String& folder, const String& suffix);

/// Moves each item of the extract folder's top level into the merge folder, and deletes the former
/// with what couldn't be moved. A folder of the same name that isn't empty stays and the archive's
/// is lost; a file or an empty folder is replaced. Nothing without a merge folder.
void Merge(const Placement& placement);

}  // namespace zephin

#endif  // SELECTION_PLACEMENT_H_
