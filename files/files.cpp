#include "files/files.h"

#include "files/folders.h"
#include "platform/framework/folder_item.h"
#include "platform/framework/shell.h"
#include "platform/framework/text.h"
#include "util/paths.h"

namespace zephin::ViewConst {
namespace {

using GlobalsVk::MyGetFolderItem;

enum class Strictness { Tolerant, Strict };

bool CopyItem(const String& source, const String& destination, Strictness strictness) {
  const Ref<FolderItem> from = MyGetFolderItem(source);
  const Ref<FolderItem> to = MyGetFolderItem(destination);
  if (from.IsNil() || to.IsNil()) {
    return false;
  }
  if (to->Exists()) {
    to->Delete();
    if (strictness == Strictness::Strict && to->Exists()) {
      DeleteFolderOrApp(destination);
    }
  }
  from->CopyFileTo(to);
  bool ok = from->LastErrorCode() == 0;
  if (!ok && strictness == Strictness::Tolerant) {
    // Some disks report an error for attributes that they cannot hold, after a complete copy.
    ok = to->Exists() && to->Length() == from->Length();
  }
  // Also for a plain file, which holds nothing to copy: for a folder or a bundle this is the step
  // that brings the contents, as CopyFileTo copies only the item itself.
  return ok && CopyFolder(source, destination);
}

}  // namespace

bool FileExists(const String& path) {
  const Ref<FolderItem> item = MyGetFolderItem(path);
  return !item.IsNil() && item->Exists();
}

bool DirectoryExists(const String& path) {
  String folder = path;
  // Publishers write folders both ways.
  DropTrailingPathSeparator(folder);
  const Ref<FolderItem> item = MyGetFolderItem(folder);
  return !item.IsNil() && item->Directory() && item->Exists();
}

Ref<FolderItem> GetApplicationFolder() {
  return SpecialFolder::Applications();
}

String GetApplicationFolderPath() {
  String path = MyAbsolutePath(GetApplicationFolder());
  // A folder that could not be made has none, and names would be joined to its own.
  if (Right(path, 1) != GetPathSeparator()) {
    path += GetPathSeparator();
  }
  return path;
}

void DeleteFile(const String& path) {
  const Ref<FolderItem> item = MyGetFolderItem(path);
  if (!item.IsNil() && item->Exists()) {
    item->Delete();
  }
}

bool RenameFile(const String& oldPath, const String& newPath) {
  // On a disk that ignores letter case both are one file, and the deletion below would lose it.
  if (TextEquals(Lowercase(oldPath), Lowercase(newPath))) {
    return false;
  }
  const Ref<FolderItem> oldItem = MyGetFolderItem(oldPath);
  if (oldItem.IsNil() || !oldItem->Exists()) {
    return false;
  }
  DeleteFile(newPath);
  const Ref<FolderItem> newItem = MyGetFolderItem(newPath);
  if (newItem.IsNil()) {
    return false;
  }
  oldItem->MoveFileTo(newItem);
  return true;
}

bool CopyFile(const String& source, const String& destination) {
  return CopyItem(source, destination, Strictness::Tolerant);
}

bool CopyFileB(const String& source, const String& destination) {
  return CopyItem(source, destination, Strictness::Strict);
}

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
  // Mode 1 takes absolute paths only, so a publisher's relative name hides nothing by accident.
  const Ref<FolderItem> item = GetFolderItem(path, 1);
  if (!item.IsNil() && item->Exists()) {
    item->SetVisible(false);
  }
}

}  // namespace zephin::ViewConst
