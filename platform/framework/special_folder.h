#ifndef PLATFORM_FRAMEWORK_SPECIAL_FOLDER_H_
#define PLATFORM_FRAMEWORK_SPECIAL_FOLDER_H_

#include "platform/framework/folder_item.h"

/// Well-known folders of the machine and the user, from the application's `Machine`. Nil where the
/// machine doesn't say.
namespace zephin::SpecialFolder {

Ref<FolderItem> System();
Ref<FolderItem> UserHome();
Ref<FolderItem> Desktop();
Ref<FolderItem> Temporary();

}  // namespace zephin::SpecialFolder

#endif  // PLATFORM_FRAMEWORK_SPECIAL_FOLDER_H_
