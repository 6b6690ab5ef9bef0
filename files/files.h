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

/// The applications folder, which is made if nothing exists there. It does not exist if that fails.
Ref<FolderItem> GetApplicationFolder();

/// Its path, always with a trailing "/".
String GetApplicationFolderPath();

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

// What the file system allows and shows. All fail silently: if a right can't be given or a file
// can't be hidden, the install goes on.

/// Lets all users read and write the item at `path`, and enter it if it is a folder: mode 777 for a
/// folder, 666 for a file, which then can't be run as a program. Waits for a shell command. Only
/// the item's own mode changes, not that of a folder's contents. Does nothing if the path gives no
/// item.
void AllUsersFullAccess(const String& path);

/// Gives all users the rights to read, write and execute (ugo+rwx) the item, or the target of an
/// alias. Does nothing for nil.
void AllUsersFullAccessOnMac(const Ref<FolderItem>& item);

/// The same for an item of a tree that is being deleted, where an alias must not pass the rights on
/// to its target. Uses a system call: shell commands for the items of a tree of 20,000 would take
/// half a minute. The item must not be nil.
void AllUsersFullAccessInTree(const Ref<FolderItem>& item);

/// Hides an item from the file browser, where the platform has a flag for that.
void SetInvisible(const String& path);

}  // namespace zephin::ViewConst

#endif  // FILES_FILES_H_
