#ifndef FILES_FOLDERS_H_
#define FILES_FOLDERS_H_

#include "platform/framework/string.h"

/// Work on whole trees by full path. Events run between the items, so the tree may change
/// meanwhile.
namespace zephin::ViewConst {

/// Copies the contents of `source` into `destination`, which is made if necessary and keeps its own
/// contents. Aliases are copied as their targets; a folder that leads back to one above it, or to
/// the copy, is left out. A failed item doesn't end the copy. False only if one of the paths gives
/// no item: the error codes read are the source folder's own, not those of its items.
bool CopyFolder(const String& source, const String& destination);

/// Deletes a file, an alias (never its target), or a folder or bundle with its contents, after
/// giving all users all rights on each item, so that locked ones can be deleted. Fails silently.
void DeleteFolderOrApp(const String& path);

/// Makes a folder and all missing folders above it. Stops at the first that can't be made or where
/// a file is in the way, and shows a message about that if `showErrors`.
void ForceDirectories(const String& path, bool showErrors);

}  // namespace zephin::ViewConst

#endif  // FILES_FOLDERS_H_
