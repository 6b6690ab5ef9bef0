#include "payload/bundle_resources.h"

#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "platform/bundle/bundle_location.h"
#include "util/paths.h"

namespace zephin {

Ref<FolderItem> ResourcesFolder() {
  const Ref<FolderItem> contents = ViewConst::ContentsFolder();
  return contents.IsNil() ? nullptr : contents->Child("Resources", true);
}

Ref<FolderItem> FindHelper(ZephinStubWindow& window, String& name,
                           const Ref<FolderItem>& resources) {
  if (window.SpecialPath(name)) {
    return ViewConst::FileExists(name) ? GlobalsVk::MyGetFolderItem(name) : nullptr;
  }
  return resources.IsNil() ? nullptr : resources->Child(name, true);
}

}  // namespace zephin
