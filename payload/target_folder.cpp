#include "payload/target_folder.h"

#include "app/zephin_stub_window.h"
#include "platform/framework/application.h"
#include "platform/framework/select_folder_dialog.h"
#include "platform/framework/text.h"
#include "util/paths.h"

namespace zephin {

bool LiesBelowItsParent(const String& targetName) {
  int depth = 0;
  for (const String& part : Split(targetName, "/")) {
    if (part == "..") {
      --depth;
    } else if (!part.IsEmpty() && !(part == ".")) {
      ++depth;
    }
    if (depth < 0) {
      return false;
    }
  }
  return depth > 0;
}

String ZephinStubWindow::SelectTargetFolder(const String& defaultPath, bool emptyOnCancel) {
  SelectFolderDialog dialog;
  dialog.SetActionButtonCaption("Select");
  dialog.SetTitle(CustomLabel(dialog.Title(), Custom(Caption::FolderTitle)));
  dialog.SetActionButtonCaption(
      CustomLabel(dialog.ActionButtonCaption(), Custom(Caption::FolderSelect)));
  dialog.SetCancelButtonCaption(CustomLabel(dialog.CancelButtonCaption(), Custom(Caption::Cancel)));
  try {
    dialog.SetInitialDirectory(GlobalsVk::MyGetFolderItem(defaultPath));
  } catch (const FrameworkException&) {
    dialog.SetInitialDirectory(GetFolderItem(""));
  }
  const Ref<FolderItem> chosen = dialog.ShowModal();
  if (chosen.IsNil()) {
    return emptyOnCancel ? "" : defaultPath;
  }
  if (!chosen->IsWriteable()) {
    MsgBox(Wording(Caption::NotWritable));
    return "";
  }
  String path = ViewConst::MyAbsolutePath(chosen);
  ViewConst::DropTrailingPathSeparator(path);
  return path;
}

}  // namespace zephin
