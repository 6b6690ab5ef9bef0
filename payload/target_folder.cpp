#include "payload/target_folder.h"

#include "app/zephin_stub_window.h"
#include "dialogs/yes_no_dialog.h"
#include "files/files.h"
#include "files/folders.h"
#include "platform/bundle/bundle_location.h"
#include "platform/framework/application.h"
#include "platform/framework/session.h"
#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/paths.h"
#include "util/process.h"

namespace zephin {
namespace {

using ViewConst::DirectoryExists;
using ViewConst::gLineBreak;

bool UserAgreesToReplace(const ZephinStubWindow& window) {
  // Where the publisher gives no text, the dialog keeps its own.
  const Ref<YesNoDialog> dialog = MakeWindow<YesNoDialog>();
  const auto setText = [&window](const Ref<Label>& label, Caption caption) {
    label->SetText(window.CustomLabel(label->Text(), window.Custom(caption)));
  };
  const auto setCaption = [&window](const Ref<PushButton>& button, Caption caption) {
    button->SetCaption(window.CustomLabel(button->Caption(), window.Custom(caption)));
  };
  dialog->SetTitle(window.CustomLabel(dialog->Title(), window.Custom(Caption::ReplaceTitle)));
  setText(dialog->ConfirmLabel1(), Caption::ReplaceFirst);
  setText(dialog->ConfirmLabel2(), Caption::ReplaceSecond);
  dialog->ConfirmLabel3()->SetText(window.fTargetFolder);
  setCaption(dialog->CancelBtn(), Caption::Cancel);
  setCaption(dialog->OKBtn(), Caption::Ok);
  dialog->ShowModal();
  return TextEquals(dialog->fBtnName, "OKBtn");
}

}  // namespace

bool LiesBelowItsParent(const String& targetName) {
  int depth = 0;
  for (const String& part : Split(targetName, "/")) {
    if (part == "..") {
      --depth;
    } else if (!part.IsEmpty() && !(part == ".")) {
      ++depth;
    }
    // The final depth alone would accept "../x/y".
    if (depth < 0) {
      return false;
    }
  }
  return depth > 0;
}

String PlaceOfTarget(ZephinStubWindow& window) {
  if (window.fApplicationFolder) {
    return ViewConst::GetApplicationFolderPath() + window.fTargetFolder;
  }
  const String parent = window.SelectTargetFolder(ViewConst::GetApplicationPath(), true);
  return parent.IsEmpty() ? "" : parent + ViewConst::GetPathSeparator() + window.fTargetFolder;
}

bool RemoveTargetFolder(ZephinStubWindow& window) {
  if (window.fPromptToReplace && !UserAgreesToReplace(window)) {
    return false;
  }
  ViewConst::DeleteFolderOrApp(window.fTargetFolder);
  window.ShowInstallinProgress();
  Application::Current().DoEvents(1);
  // A deletion may take effect late, on a network drive for instance.
  ViewConst::Sleep(1);
  if (DirectoryExists(window.fTargetFolder)) {
    ViewConst::Sleep(3);
  }
  if (DirectoryExists(window.fTargetFolder)) {
    ReportUndeletableFolder();
    return false;
  }
  return true;
}

void ReportUndeletableFolder() {
  MsgBox("Install Aborted" + gLineBreak + gLineBreak +
         "Unable to delete existing installed folder.  Reboot the computer and try again or "
         "manually delete the previously installed application folder.");
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
    // A desktop may reject the folder; the bundle's own always exists.
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
  // The root folder gives an empty path, which callers take for a cancel.
  String path = ViewConst::MyAbsolutePath(chosen);
  ViewConst::DropTrailingPathSeparator(path);
  return path;
}

}  // namespace zephin
