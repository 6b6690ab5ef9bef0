#include "tests/fuzz/imagined_disk.h"

#include "platform/access_rights.h"
#include "util/files.h"
#include "util/folders.h"

namespace zephin::test {

ImaginedDisk& Disk() {
  static ImaginedDisk disk;
  return disk;
}

unsigned ImaginedDisk::Kind(const std::string& path) const {
  // As on a real one, nothing has an empty or a relative path.
  if (!path.starts_with('/')) {
    return 2;
  }
  std::uint32_t hash = salt + 2166136261U;
  for (const char c : path) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
  }
  return (hash >> 16U) % 3;
}

}  // namespace zephin::test

namespace zephin::ViewConst {

using test::Deed;
using test::Disk;

namespace {

/// Whether it succeeds hangs on the path, too.
bool Do(Deed deed, const String& path, const String& destination = "") {
  Disk().acts.push_back({deed, path.Bytes(), destination.Bytes()});
  return Disk().HasAnything(destination.Bytes() + path.Bytes());
}

}  // namespace

bool FileExists(const String& path) {
  return Disk().HasAnything(path.Bytes());
}

bool DirectoryExists(const String& path) {
  return Disk().HasFolder(path.Bytes());
}

Ref<FolderItem> GetApplicationFolder() {
  return nullptr;
}

void DeleteFile(const String& path) {
  Do(Deed::Delete, path);
}

bool RenameFile(const String& oldPath, const String& newPath) {
  return Do(Deed::Rename, oldPath, newPath);
}

bool CopyFile(const String& source, const String& destination) {
  return Do(Deed::Copy, source, destination);
}

bool CopyFileB(const String& source, const String& destination) {
  return Do(Deed::Copy, source, destination);
}

bool CopyFolder(const String& source, const String& destination) {
  return Do(Deed::Copy, source, destination);
}

void DeleteFolderOrApp(const String& path) {
  Do(Deed::Delete, path);
}

void ForceDirectories(const String& path, bool /*showErrors*/) {
  Do(Deed::MakeFolder, path);
}

void AllUsersFullAccess(const String& path) {
  Do(Deed::OpenToAll, path);
}

void AllUsersFullAccessOnMac(const Ref<FolderItem>& item) {
  if (!item.IsNil()) {
    Do(Deed::OpenToAll, item->NativePath());
  }
}

void AllUsersFullAccessInTree(const Ref<FolderItem>& item) {
  Do(Deed::OpenToAll, item->NativePath());
}

void SetInvisible(const String& /*path*/) {}

}  // namespace zephin::ViewConst
