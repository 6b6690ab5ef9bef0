#ifndef FILES_ACCESS_RIGHTS_H_
#define FILES_ACCESS_RIGHTS_H_

#include "platform/framework/folder_item.h"

/// What the file system allows and shows. All fail silently: if a right can't be given or a file
/// can't be hidden, the install goes on.
namespace zephin::ViewConst {

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

#endif  // FILES_ACCESS_RIGHTS_H_
