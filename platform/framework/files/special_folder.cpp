#include "platform/framework/special_folder.h"

#include <string>

#include "platform/framework/application.h"

namespace zephin::SpecialFolder {
namespace {

Ref<FolderItem> ItemOf(const std::string& path) {
  return path.empty() ? nullptr : MakeRef<FolderItem>(path);
}

}  // namespace

Ref<FolderItem> System() {
  return ItemOf(Application::Current().Facts().systemFolder);
}
Ref<FolderItem> UserHome() {
  return ItemOf(Application::Current().Facts().userHome);
}
Ref<FolderItem> Desktop() {
  return ItemOf(Application::Current().Facts().desktopFolder);
}
Ref<FolderItem> Temporary() {
  return ItemOf(Application::Current().Facts().temporaryFolder);
}

}  // namespace zephin::SpecialFolder
