#include "app/zephin_stub_window.h"
#include "dialogs/yes_no_dialog.h"
#include "files/files.h"
#include "files/folders.h"
#include "payload/scrambled_file.h"
#include "payload/target_folder.h"
#include "platform/bundle/bundle_location.h"
#include "platform/framework/application.h"
#include "platform/framework/text.h"
#include "setup/bundle_files.h"
#include "util/globals.h"
#include "util/paths.h"
#include "util/process.h"

namespace zephin {
namespace {

using GlobalsVk::MyGetFolderItem;
using ViewConst::DirectoryExists;
using ViewConst::FileExists;
using ViewConst::GetPathSeparator;
using ViewConst::gLineBreak;
using ViewConst::MyAbsolutePath;

/// Where the bundle's payload lies. Everything is empty if the bundle can't be found; then there is
/// no payload to copy, and the user is told so at that step.
struct Payload {
  Ref<FolderItem> resources;
  String dataPath;       ///< The payload in one file.
  String firstPartPath;  ///< The first piece of one that is split across discs.
};

Payload FindPayload() {
  const Ref<FolderItem> contents = ViewConst::ContentsFolder();
  const Ref<FolderItem> resources = contents.IsNil() ? nullptr : contents->Child("Resources", true);
  if (resources.IsNil()) {
    return {};
  }
  const String resourcesPath = MyAbsolutePath(resources);
  return {resources, resourcesPath + kPayloadFile, resourcesPath + kFirstPieceFile};
}

/// The item to start after the install; nil if there is none. Looked up before the install, so that
/// a program that only the payload brings is found by no token.
Ref<FolderItem> FindAfterProgram(ZephinStubWindow& w, const Ref<FolderItem>& resources) {
  if (resources.IsNil() || w.fExecuteAfterName.IsEmpty()) {
    return nullptr;
  }
  if (w.SpecialPath(w.fExecuteAfterName)) {
    return FileExists(w.fExecuteAfterName) ? MyGetFolderItem(w.fExecuteAfterName) : nullptr;
  }
  return resources->Child(w.fExecuteAfterName, true);
}

/// Makes `fTargetFolder` a full path, or empty if the user gives no place, and gives the archive's
/// path beside it.
String PlaceTarget(ZephinStubWindow& w) {
  String parent;
  if (w.fApplicationFolder) {
    parent = MyAbsolutePath(ViewConst::GetApplicationFolder());
  } else {
    const String chosen = w.SelectTargetFolder(ViewConst::GetApplicationPath(), true);
    if (chosen.IsEmpty()) {
      w.fTargetFolder = "";
      return "";
    }
    parent = chosen + GetPathSeparator();
  }
  w.fTargetFolder = parent + w.fTargetFolder;
  return w.fTargetFolder + ".zip";
}

bool UserAgreesToReplace(const ZephinStubWindow& w) {
  const Ref<YesNoDialog> dialog = MakeWindow<YesNoDialog>();
  const auto setText = [&w](const Ref<Label>& label, Caption caption) {
    label->SetText(w.CustomLabel(label->Text(), w.Custom(caption)));
  };
  const auto setCaption = [&w](const Ref<PushButton>& button, Caption caption) {
    button->SetCaption(w.CustomLabel(button->Caption(), w.Custom(caption)));
  };
  dialog->SetTitle(w.CustomLabel(dialog->Title(), w.Custom(Caption::ReplaceTitle)));
  setText(dialog->ConfirmLabel1(), Caption::ReplaceFirst);
  setText(dialog->ConfirmLabel2(), Caption::ReplaceSecond);
  dialog->ConfirmLabel3()->SetText(w.fTargetFolder);
  setCaption(dialog->CancelBtn(), Caption::Cancel);
  setCaption(dialog->OKBtn(), Caption::Ok);
  dialog->ShowModal();
  return TextEquals(dialog->fBtnName, "OKBtn");
}

void ReportUndeletable() {
  MsgBox("Install Aborted" + gLineBreak + gLineBreak +
         "Unable to delete existing installed folder.  Reboot the computer and try again or "
         "manually delete the previously installed application folder.");
}

/// Deletes the installed folder; false, after a message, if it is still there some seconds later.
bool DeleteInstalledFolder(ZephinStubWindow& w) {
  ViewConst::DeleteFolderOrApp(w.fTargetFolder);
  w.ShowInstallinProgress();
  Application::Current().DoEvents(1);
  ViewConst::Sleep(1);
  if (DirectoryExists(w.fTargetFolder)) {
    ViewConst::Sleep(3);
  }
  if (DirectoryExists(w.fTargetFolder)) {
    ReportUndeletable();
    return false;
  }
  return true;
}

/// A patch needs an installed folder; tells the user if there is none.
bool PatchHasItsTarget(const ZephinStubWindow& w) {
  if (!w.fInstallationPatch || DirectoryExists(w.fTargetFolder)) {
    return true;
  }
  MsgBox(w.Wording(Caption::PatchNoTarget));
  return false;
}

/// Clears what stands where the payload is going to be expanded. False ends the install.
bool ClearTarget(ZephinStubWindow& w, bool nameIsSafe) {
  if (w.fInstallationPatch) {
    // The patch is expanded into a folder beside the installed one.
    w.fTargetFolder += "Patch";
  }
  if (!nameIsSafe) {
    ReportUndeletable();
    return false;
  }
  if (w.fInstallationPatch && DirectoryExists(w.fTargetFolder)) {
    w.ShowInstallinProgress();
    ViewConst::DeleteFolderOrApp(w.fTargetFolder);
  }
  if (!DirectoryExists(w.fTargetFolder)) {
    return true;
  }
  if (w.fPromptToReplace && !UserAgreesToReplace(w)) {
    return false;
  }
  return DeleteInstalledFolder(w);
}

/// Writes the payload beside the target. A failed copy is told, and the install goes on: the steps
/// behind it put up with a missing file.
void WriteArchive(ZephinStubWindow& w, const Payload& payload, const String& zipPath) {
  w.ShowInstallinProgress();
  if (FileExists(zipPath)) {
    ViewConst::DeleteFile(zipPath);
  }
  if (FileExists(payload.firstPartPath)) {
    w.CombineSplitSetup(payload.firstPartPath, zipPath);
  } else if (!ViewConst::CopyFile(payload.dataPath, zipPath)) {
    MsgBox(w.Wording(Caption::Failed));
  }
}

}  // namespace

void ZephinStubWindow::ExpandFolder() {
  InfoBtn()->SetVisible(false);
  const Payload payload = FindPayload();
  const Ref<FolderItem> executeAfterItem = FindAfterProgram(*this, payload.resources);
  if (RelocateInstaller(payload.firstPartPath)) {
    return;
  }
  PreInstallCopy();
  const bool nameIsSafe = LiesBelowItsParent(fTargetFolder);
  const String zipPath = PlaceTarget(*this);
  if (fTargetFolder.IsEmpty() || !PatchHasItsTarget(*this)) {
    return;
  }
  if (!ClearTarget(*this, nameIsSafe)) {
    return;
  }
  WriteArchive(*this, payload, zipPath);
  ViewConst::EncryptDecryptFileEnd(zipPath, false);
  const Ref<FolderItem> zipItem = MyGetFolderItem(zipPath);
  if (!zipItem.IsNil()) {
    zipItem->Launch(true);
    ZipFileProcess(zipPath, zipItem);
  }
  if (fInstallationPatch) {
    ApplyInstallationPatch();
  }
  PostInstallCopy();
  ZipFileDelete(zipPath, executeAfterItem);
}

}  // namespace zephin
