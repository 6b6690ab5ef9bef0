#ifndef FILES_FILES_H_
#define FILES_FILES_H_

#include "platform/framework/folder_item.h"
#include "platform/framework/string.h"

/// Work on single files and folders by full path. An item is got afresh for each call. Nothing is
/// raised and nothing is shown: a function with a result answers false for a failure, the others
/// fail silently.
namespace zephin::ViewConst {

/// Whether anything stands there, a folder included.
bool FileExists(const String& path);

/// Whether a folder stands there. One trailing separator is dropped, so "/" itself answers false.
bool DirectoryExists(const String& path);

/// The applications folder of the system volume; it need not exist.
Ref<FolderItem> GetApplicationFolder();

/// One plain delete of a file, a link or an empty folder; a full folder stays.
void DeleteFile(const String& path);

/// Moves what stands at `oldPath` to `newPath`, where what stands there is deleted first. False,
/// with nothing done, if the paths differ in letter case at most or nothing stands at `oldPath`.
/// True says only that the move was tried.
bool RenameFile(const String& oldPath, const String& newPath);

/// Copies a file, or a folder or bundle with all it holds. An error reported after a full copy does
/// not count: the lengths decide. A full folder in the way is copied into.
bool CopyFile(const String& source, const String& destination);

/// The strict form, for a destination that may be in the way: it is cleared with all it holds, and
/// every error counts.
bool CopyFileB(const String& source, const String& destination);

}  // namespace zephin::ViewConst

#endif  // FILES_FILES_H_
