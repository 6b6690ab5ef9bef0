#ifndef FILES_ACCESS_RIGHTS_H_
#define FILES_ACCESS_RIGHTS_H_

#include "platform/framework/folder_item.h"

/// What the file system allows and shows. None of these reports anything: if a right can't be given
/// or a file can't be hidden, the install goes on.
namespace zephin::ViewConst {

/// Lets all users read and write the item at `path`, and enter it if it is a folder: mode 777 for a
/// folder, 666 for a file, which can't be run as a program then. By a shell command that waits.
/// A folder's own mode changes, not that of what it holds. A path that gives no item is silent.
void AllUsersFullAccess(const String& path);

/// Adds all rights of all users (ugo+rwx) to those of an item, which may be nil. An alias means
/// what it points to.
void AllUsersFullAccessOnMac(const Ref<FolderItem>& item);

/// Adds them to an item of a tree that is being deleted, where an alias must not pass the rights on
/// to a target that stays. By system call: a shell command for each item of a tree of 20,000 would
/// take half a minute. The item must not be nil.
void AllUsersFullAccessInTree(const Ref<FolderItem>& item);

/// Hides an item from the file browser, where the platform has a flag for that.
void SetInvisible(const String& path);

}  // namespace zephin::ViewConst

#endif  // FILES_ACCESS_RIGHTS_H_
