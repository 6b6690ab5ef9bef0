#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "platform/framework/files/folder_names.h"
#include "platform/framework/files/path_bytes.h"
#include "platform/framework/folder_item.h"

namespace zephin {
namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

struct FreeText {
  void operator()(char* text) const { std::free(text); }
};

/// Where the link at `path` leads; `path` itself if there is none or it leads nowhere.
std::string FollowLink(const std::string& path) {
  struct stat state {};
  if (path.find('\0') != std::string::npos || lstat(path.c_str(), &state) != 0 ||
      !S_ISLNK(state.st_mode)) {
    return path;
  }
  const std::unique_ptr<char, FreeText> target(realpath(path.c_str(), nullptr));
  return target == nullptr ? path : target.get();
}

}  // namespace

std::vector<std::string> NamesInFolder(const char* path) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, CloseFolder> folder(opendir(path));
  if (folder == nullptr) {
    return names;
  }
  while (const dirent* entry = readdir(folder.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") {
      names.emplace_back(name);
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

Ref<FolderItem> FolderItem::Child(const String& name, bool followAlias) const {
  if (name.IsEmpty()) {
    return nullptr;
  }
  const std::string path = WithoutTrailingSlashes(PathInFolder(path_, PathBytes(name)));
  return MakeRef<FolderItem>(followAlias ? FollowLink(path) : path);
}

std::int64_t FolderItem::Count() const {
  names_ = NamesInFolder(SystemPath(path_));
  listed_ = true;
  return static_cast<std::int64_t>(names_.size());
}

Ref<FolderItem> FolderItem::Item(std::int64_t index) const {
  return Listed(index, Links::Followed);
}

Ref<FolderItem> FolderItem::TrueItem(std::int64_t index) const {
  return Listed(index, Links::Own);
}

Ref<FolderItem> FolderItem::Listed(std::int64_t index, Links links) const {
  if (!listed_) {
    Count();
  }
  if (index < 1 || index > static_cast<std::int64_t>(names_.size())) {
    return nullptr;
  }
  const std::string& name = names_[static_cast<std::size_t>(index - 1)];
  return Ref<FolderItem>(
      std::shared_ptr<FolderItem>(new FolderItem(PathInFolder(path_, name), links)));
}

}  // namespace zephin
