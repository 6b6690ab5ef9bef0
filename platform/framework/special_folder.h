#ifndef PLATFORM_FRAMEWORK_SPECIAL_FOLDER_H_
#define PLATFORM_FRAMEWORK_SPECIAL_FOLDER_H_

#include "platform/framework/folder_item.h"

/// Well-known folders of the machine and the user, taken from the application's `Machine`. Each is
/// nil if the machine does not know it.
namespace zephin::SpecialFolder {

/// Its parent is the root of the system volume.
Ref<FolderItem> System();
Ref<FolderItem> UserHome();
/// It need not exist.
Ref<FolderItem> Desktop();
/// A private folder of the user.
Ref<FolderItem> Temporary();

}  // namespace zephin::SpecialFolder

#endif  // PLATFORM_FRAMEWORK_SPECIAL_FOLDER_H_
