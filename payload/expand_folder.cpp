#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "files/folders.h"
#include "payload/bundle_resources.h"
#include "payload/scrambled_file.h"
#include "payload/target_folder.h"
#include "platform/framework/application.h"
#include "setup/bundle_files.h"
#include "util/paths.h"

namespace zephin {
namespace {

using GlobalsVk::MyGetFolderItem;
using ViewConst::DirectoryExists;
using ViewConst::FileExists;

/// Where the payload is in the bundle. Everything is empty if the bundle can't be found; the copy
/// of the payload then fails, which is reported.
struct Payload {
  Ref<FolderItem> resources;
  String dataPath;       ///< The payload in one file.
  String firstPartPath;  ///< The first piece of one that is split across discs.
};

Payload FindPayload() {
  const Ref<FolderItem> resources = ResourcesFolder();
  if (resources.IsNil()) {
    return {};
  }
  const String resourcesPath = ViewConst::MyAbsolutePath(resources);
  return {resources, resourcesPath + kPayloadFile, resourcesPath + kFirstPieceFile};
}

/// The item to start after the install; nil if there is none. A name with a token stays as it is if
/// the bundle can't be found.
Ref<FolderItem> FindAfterProgram(ZephinStubWindow& w, const Ref<FolderItem>& resources) {
  return resources.IsNil() || w.fExecuteAfterName.IsEmpty()
             ? nullptr
             : FindHelper(w, w.fExecuteAfterName, resources);
}

/// Writes the payload beside the target folder. A failed copy is reported and the install
/// goes on: the steps that follow accept a missing file.
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

/// Brings the payload into the target folder or, if it is a patch, into the installed one.
void ExpandPayload(ZephinStubWindow& w, const Payload& payload, const String& zipPath) {
  WriteArchive(w, payload, zipPath);
  ViewConst::EncryptDecryptFileEnd(zipPath, false);
  const Ref<FolderItem> zipItem = MyGetFolderItem(zipPath);
  if (!zipItem.IsNil()) {
    // The desktop expands the archive beside itself and gives no signal of its end.
    zipItem->Launch(true);
    w.ZipFileProcess(zipPath, zipItem);
  }
  if (w.fInstallationPatch) {
    w.ApplyInstallationPatch();
  }
}

}  // namespace

void ZephinStubWindow::ExpandFolder() {
  InfoBtn()->SetVisible(false);
  const Payload payload = FindPayload();
  // Looked up before the install: a program that only the payload brings isn't found by a token.
  const Ref<FolderItem> afterProgram = FindAfterProgram(*this, payload.resources);
  if (RelocateInstaller(payload.firstPartPath)) {
    return;
  }
  PreInstallCopy();
  const bool nameIsSafe = LiesBelowItsParent(fTargetFolder);
  fTargetFolder = PlaceOfTarget(*this);
  if (fTargetFolder.IsEmpty()) {
    return;
  }
  const String zipPath = fTargetFolder + ".zip";
  if (fInstallationPatch) {
    if (!DirectoryExists(fTargetFolder)) {
      MsgBox(Wording(Caption::PatchNoTarget));
      return;
    }
    // A patch is expanded into a folder beside the installed one, to be merged from there.
    fTargetFolder += "Patch";
  }
  if (!nameIsSafe) {
    ReportUndeletableFolder();
    return;
  }
  if (fInstallationPatch && DirectoryExists(fTargetFolder)) {
    // Left by an earlier run, so it is deleted without a question.
    ShowInstallinProgress();
    ViewConst::DeleteFolderOrApp(fTargetFolder);
  }
  if (DirectoryExists(fTargetFolder) && !RemoveTargetFolder(*this)) {
    return;
  }
  ExpandPayload(*this, payload, zipPath);
  PostInstallCopy();
  ZipFileDelete(zipPath, afterProgram);
}

}  // namespace zephin
