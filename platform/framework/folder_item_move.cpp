#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

#include "platform/framework/folder_item.h"
#include "platform/framework/move_tree.h"
#include "platform/framework/path_bytes.h"
#include "platform/framework/system_calls.h"

namespace zephin {
namespace {

bool StandsAt(const char* path) {
  struct stat state {};
  return lstat(path, &state) == 0;
}

/// Whether what stands at `to` may be replaced by a move. 0, or a code.
int MayReplace(const char* from, const char* to) {
  struct stat state {};
  if (stat(to, &state) == 0 && S_ISDIR(state.st_mode)) {
    return EISDIR;
  }
  if (lstat(from, &state) != 0) {
    return errno;
  }
  return S_ISDIR(state.st_mode) ? ENOTDIR : 0;
}

/// Whether the place `to` lies in the folder `from`, by whatever links it is named.
bool LiesIn(const std::string& from, const std::string& to) {
  const auto realFolderOf = [](const std::string& path) {
    std::error_code failure;
    return std::filesystem::canonical(FolderOfPath(path), failure);
  };
  const std::filesystem::path folder = realFolderOf(from) / from.substr(from.rfind('/') + 1);
  const std::filesystem::path place = realFolderOf(to);
  return std::mismatch(folder.begin(), folder.end(), place.begin(), place.end()).first ==
         folder.end();
}

int MoveToOtherFileSystem(const char* from, const char* to) {
  if (LiesIn(from, to)) {
    return EINVAL;
  }
  struct stat state {};
  if (lstat(from, &state) != 0) {
    return errno;
  }
  const bool movable = S_ISREG(state.st_mode) || S_ISDIR(state.st_mode) || S_ISLNK(state.st_mode);
  if (!movable) {
    return EINVAL;
  }
  if (unlink(to) != 0 && errno != ENOENT) {
    return errno;
  }
  return MoveTree(from, to);
}

int MoveOnce(const char* from, const char* to) {
  int code = RenameOntoNothing(from, to);
  if (code != EEXIST && code != EXDEV) {
    return code;
  }
  if (StandsAt(to)) {
    const int refusal = MayReplace(from, to);
    if (refusal != 0) {
      return refusal;
    }
  }
  if (code == EEXIST) {
    code = std::rename(from, to) == 0 ? 0 : errno;
  }
  return code == EXDEV ? MoveToOtherFileSystem(from, to) : code;
}

/// Linux wants write permission on a folder that changes its parent, since its ".." changes. The
/// user's own folder gets it for the time of the move.
int MoveItem(const char* from, const char* to) {
  const int code = MoveOnce(from, to);
  struct stat state {};
  if (code != EACCES || lstat(from, &state) != 0 || !S_ISDIR(state.st_mode) ||
      (state.st_mode & S_IWUSR) != 0 || state.st_uid != geteuid()) {
    return code;
  }
  ChangeRights(from, (state.st_mode & ALLPERMS) | S_IWUSR);
  const int secondCode = MoveOnce(from, to);
  ChangeRights(secondCode == 0 ? to : from, state.st_mode & ALLPERMS);
  return secondCode;
}

}  // namespace

void FolderItem::MoveFileTo(const Ref<FolderItem>& destination) {
  lastErrorCode_ = MoveItem(SystemPath(path_), SystemPath(destination->path_));
}

void FolderItem::SetName(const String& name) {
  const std::string bytes = PathBytes(name);
  const bool plain = !bytes.empty() && bytes != "." && bytes != ".." &&
                     bytes.find('/') == std::string::npos && bytes.find('\0') == std::string::npos;
  if (!plain || path_ == "/") {
    lastErrorCode_ = EINVAL;
    return;
  }
  const std::string path = PathInFolder(FolderOfPath(path_), bytes);
  if (path == path_) {
    lastErrorCode_ = StandsAt(SystemPath(path_)) ? 0 : ENOENT;
    return;
  }
  lastErrorCode_ = RenameOntoNothing(SystemPath(path_), path.c_str());
  if (lastErrorCode_ == 0) {
    path_ = path;
  }
}

}  // namespace zephin
