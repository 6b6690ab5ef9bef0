#ifndef FILES_FOLDERS_H_
#define FILES_FOLDERS_H_

#include "platform/framework/string.h"

/// Work on whole trees by full path. Events run between the items, so the disk may change under a
/// tree while it is worked on.
namespace zephin::ViewConst {

/// Copies what `source` holds into `destination`, which is made if need be and keeps what it has.
/// Aliases are copied as what they point to; a folder that leads back to one above it, or to the
/// copy, is left out. A failed item doesn't end the copy. False only if one
/// of the paths gives no item: the codes that are read are the source folder's own, not those of
/// the items.
bool CopyFolder(const String& source, const String& destination);

/// Deletes a file, an alias (its target is spared), or a folder or bundle with all it holds, after
/// giving all rights on each item, so that locked ones can go too. What can't go stays, silently.
void DeleteFolderOrApp(const String& path);

/// Makes a folder with all the folders above it. It stops at the first that can't be made or where
/// a file is in the way, and shows a message window about that if `showErrors`.
void ForceDirectories(const String& path, bool showErrors);

}  // namespace zephin::ViewConst

#endif  // FILES_FOLDERS_H_
