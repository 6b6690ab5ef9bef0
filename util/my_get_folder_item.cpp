#include "util/my_get_folder_item.h"

namespace zephin::GlobalsVk {

Ref<FolderItem> MyGetFolderItem(const String& path) {
  return path.View().starts_with('/') ? GetFolderItem(path, 1) : nullptr;
}

}  // namespace zephin::GlobalsVk
