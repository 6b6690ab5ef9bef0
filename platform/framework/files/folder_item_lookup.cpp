#include <array>
#include <cstdio>

#include "platform/framework/application.h"
#include "platform/framework/files/path_bytes.h"
#include "platform/framework/folder_item.h"
#include "platform/framework/random.h"
#include "platform/framework/special_folder.h"
#include "platform/framework/text.h"

namespace zephin {
namespace {

/// The folder that holds the bundle; empty if the machine doesn't know its executable.
std::string FolderOfBundle() {
  const std::string& executable = Application::Current().Facts().executable;
  if (executable.empty()) {
    return {};
  }
  const String path = Utf8(executable);
  const std::int64_t contents = InStr(path, "/Contents");
  return FolderOfPath(contents == 0 ? executable : Left(path, contents - 1).Bytes());
}

std::string RandomName() {
  static Random random;
  std::array<char, 32> name{};
  std::snprintf(name.data(), name.size(), "item-%016llx",
                static_cast<unsigned long long>(random.InRange(0, INT64_MAX)));
  return name.data();
}

}  // namespace

Ref<FolderItem> GetFolderItem(const String& path, int mode) {
  const std::string bytes = PathBytes(path);
  if (!bytes.empty() && bytes.front() == '/') {
    return MakeRef<FolderItem>(WithoutTrailingSlashes(bytes));
  }
  const std::string folder = !bytes.empty() && mode != 0 ? std::string() : FolderOfBundle();
  if (folder.empty()) {
    return nullptr;
  }
  return MakeRef<FolderItem>(bytes.empty() ? folder
                                           : WithoutTrailingSlashes(PathInFolder(folder, bytes)));
}

Ref<FolderItem> GetTemporaryFolderItem() {
  const Ref<FolderItem> folder = SpecialFolder::Temporary();
  if (folder.IsNil()) {
    return nullptr;
  }
  Ref<FolderItem> item;
  do {
    item = folder->Child(Utf8(RandomName()), false);
  } while (item->Exists());
  return item;
}

}  // namespace zephin
