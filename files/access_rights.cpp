#include "files/access_rights.h"
#include "platform/framework/shell.h"
#include "util/paths.h"

namespace zephin::ViewConst {

void AllUsersFullAccess(const String& path) {
  Shell shell;
  const Ref<FolderItem> item = GlobalsVk::MyGetFolderItem(path);
  if (item.IsNil()) {
    return;
  }
  const String command = item->Directory() ? "chmod 777 " : "chmod 666 ";
  shell.Execute(command + item->ShellPath());
}

void AllUsersFullAccessOnMac(const Ref<FolderItem>& item) {
  Shell shell;
  if (!item.IsNil()) {
    shell.Execute("chmod ugo+rwx " + item->ShellPath());
  }
}

void AllUsersFullAccessInTree(const Ref<FolderItem>& item) {
  item->GrantAllRights();
}

void SetInvisible(const String& path) {
  const Ref<FolderItem> item = GetFolderItem(path, 1);
  if (!item.IsNil() && item->Exists()) {
    item->SetVisible(false);
  }
}

}  // namespace zephin::ViewConst
