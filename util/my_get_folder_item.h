#ifndef UTIL_MY_GET_FOLDER_ITEM_H_
#define UTIL_MY_GET_FOLDER_ITEM_H_

#include "platform/framework/folder_item.h"

namespace zephin::GlobalsVk {

/// The item of a full path, whether it exists or not; nil if `path` is empty or doesn't begin with
/// "/", so that relative paths never resolve.
Ref<FolderItem> MyGetFolderItem(const String& path);

}  // namespace zephin::GlobalsVk

#endif  // UTIL_MY_GET_FOLDER_ITEM_H_
