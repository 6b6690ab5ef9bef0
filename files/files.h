#ifndef FILES_FILES_H_
#define FILES_FILES_H_

#include "platform/framework/folder_item.h"
#include "platform/framework/string.h"

/// Work on single files and folders by full path. Nothing is raised and nothing is shown: a
/// function with a result returns false for a failure, the others fail silently.
namespace zephin::ViewConst {

/// Whether an item of any kind exists there, a folder included.
bool FileExists(const String& path);

/// Whether a folder exists there. One trailing separator is dropped, so that "/" gives false.
bool DirectoryExists(const String& path);

/// The applications folder of the system volume; it need not exist.
Ref<FolderItem> GetApplicationFolder();

/// One plain delete of a file, a link or an empty folder; a full folder stays.
void DeleteFile(const String& path);

/// Moves the item at `oldPath` to `newPath`; a file or an empty folder there is deleted first.
/// False, with nothing done, if the paths differ at most in letter case or nothing exists at
/// `oldPath`. True means only that the move was tried.
bool RenameFile(const String& oldPath, const String& newPath);

/// Copies a file, or a folder or bundle with its contents. An error after a complete copy is
/// ignored: the lengths decide. If a full folder is at the destination, the contents are copied
/// into it.
bool CopyFile(const String& source, const String& destination);

/// The strict form: the destination is deleted with its contents first, and every error counts.
bool CopyFileB(const String& source, const String& destination);

}  // namespace zephin::ViewConst

#endif  // FILES_FILES_H_
