#include "platform/framework/files/system_paths.h"

#include <dirent.h>

#include <algorithm>
#include <memory>
#include <string_view>

#include "platform/framework/text.h"

namespace zephin {
namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

}  // namespace

std::string PathBytes(const String& text) {
  const Encoding encoding = text.DeclaredEncoding();
  if (encoding == Encoding::UTF8 || encoding == Encoding::None) {
    return text.Bytes();
  }
  return ConvertEncoding(text, Encoding::UTF8).Bytes();
}

const char* SystemPath(const std::string& path) {
  return path.find('\0') == std::string::npos ? path.c_str() : "";
}

std::string WithoutTrailingSlashes(std::string path) {
  while (path.size() > 1 && path.back() == '/') {
    path.pop_back();
  }
  return path;
}

std::string FolderOfPath(const std::string& path) {
  const std::string folder = path.substr(0, path.rfind('/') + 1);
  return folder.empty() ? "/" : WithoutTrailingSlashes(folder);
}

std::string PathInFolder(const std::string& folder, const std::string& name) {
  std::string path;
  path.reserve(folder.size() + 1 + name.size());
  path += folder;
  if (path.empty() || path.back() != '/') {
    path += '/';
  }
  path += name;
  return path;
}

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

}  // namespace zephin
