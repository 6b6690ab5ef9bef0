#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "files/folders.h"
#include "platform/framework/application.h"
#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/paths.h"
#include "util/process.h"
#include "util/texts.h"

// A patch is a tree laid out like the installed one, in a folder beside it. A file of the patch
// replaces the installed file at the same place, or is added. The marker "*Delete*" in a name means
// that the installed item of that name without the marker is deleted: "old*Delete*.txt" deletes
// "old.txt".

namespace zephin {
namespace {

using ViewConst::FileExists;
using ViewConst::GetPathSeparator;
using ViewConst::MyExtractFilePath;

/// The name of an item in the patch tree.
struct PatchName {
  String name;  ///< Without the marker.
  bool isDelete = false;
};

PatchName ParseName(const String& name) {
  const String marker = "*Delete*";
  const std::int64_t position = ViewConst::Pos(marker, name);
  if (position == 0) {
    return {name, false};
  }
  return {Left(name, position - 1) + Mid(name, position + Len(marker)), true};
}

void ReplaceFile(const String& source, const String& destination) {
  if (FileExists(destination)) {
    ViewConst::DeleteFile(destination);
  } else if (!ViewConst::DirectoryExists(MyExtractFilePath(destination))) {
    // For a file directly in a bundle this is the folder that holds the bundle. If the bundle
    // itself is missing, the copy therefore fails and is reported.
    ViewConst::ForceDirectories(MyExtractFilePath(destination), false);
  }
  if (!ViewConst::CopyFileB(source, destination)) {
    MsgBox("Patch Failed: " + destination);
  }
}

void ApplyFile(const FolderItem& child, const PatchName& entry, const String& folderPath,
               const String& destination) {
  if (Left(entry.name, 1) == "." || !child.Visible()) {
    return;
  }
  if (!entry.isDelete) {
    ReplaceFile(folderPath + entry.name, destination);
  } else if (FileExists(destination)) {
    ViewConst::DeleteFile(destination);
  }
}

}  // namespace

void ZephinStubWindow::ApplyInstallationPatch() {
  constexpr std::int64_t kEndingLength = 5;
  if (!ViewConst::DirectoryExists(fTargetFolder)) {
    MsgBox("Patch Not Found" + ViewConst::gLineBreak + ViewConst::gLineBreak +
           "Patch folder not created at specified location.");
    return;
  }
  // Users aren't to open it while its files are in use.
  ViewConst::SetInvisible(fTargetFolder);
  const Ref<FolderItem> item = GlobalsVk::MyGetFolderItem(fTargetFolder);
  if (item.IsNil()) {
    return;
  }
  ApplyPatchFolder(item, "", zephin::Left(fTargetFolder, Len(fTargetFolder) - kEndingLength));
  // The expansion may still write files into it, so each attempt comes after a wait.
  while (ViewConst::DirectoryExists(fTargetFolder)) {
    ViewConst::Sleep(2);
    ViewConst::AllUsersFullAccess(fTargetFolder);
    ViewConst::DeleteFolderOrApp(fTargetFolder);
    RuntimeBackgroundTask();
  }
}

void ZephinStubWindow::ApplyPatchFolder(const Ref<FolderItem>& folder, const String& relativePath,
                                        const String& installedPath) {
  if (folder.IsNil()) {
    return;
  }
  const String sep = GetPathSeparator();
  const String folderPath = ViewConst::MyAbsolutePath(folder);
  const String relativeFolder = relativePath.IsEmpty() ? "" : relativePath + sep;
  const std::int64_t count = folder->Count();
  for (std::int64_t i = 1; i <= count; ++i) {
    const Ref<FolderItem> child = folder->TrueItem(i);
    if (child.IsNil()) {
      continue;
    }
    const PatchName entry = ParseName(child->Name());
    if (child->Alias() || !child->Directory()) {
      ApplyFile(*child, entry, folderPath, installedPath + sep + relativeFolder + entry.name);
    } else if (!entry.isDelete) {
      ApplyPatchFolder(child, relativeFolder + entry.name, installedPath);
    } else {
      // No separator between the last two, on purpose: a folder's marker works at the root of the
      // tree, and existing patches rely on that.
      const String path = installedPath + sep + relativePath + entry.name;
      if (ViewConst::DirectoryExists(path)) {
        ViewConst::DeleteFolderOrApp(path);
      }
    }
    RuntimeBackgroundTask();
  }
}

}  // namespace zephin
