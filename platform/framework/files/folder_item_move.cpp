#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/framework/application.h"
#include "platform/framework/files/folder_item_copy.h"
#include "platform/framework/files/system_calls.h"
#include "platform/framework/files/system_paths.h"
#include "platform/framework/folder_item.h"

namespace zephin {
namespace {

constexpr mode_t kKeptBits = S_ISVTX | ACCESSPERMS;

/// Moves an item with its contents to another file system, where nothing exists at `to`: copies it,
/// then deletes what was copied and nothing else. It keeps a list of all paths, each folder before
/// its contents, which read backwards is the order of deletion.
class TreeMove {
 public:
  TreeMove(std::string from, std::string to) : from_(std::move(from)), to_(std::move(to)) {}

  int Run() {
    if (const int code = CopyAll()) {
      RemoveCopied(to_);
      return code;
    }
    for (std::size_t i = copied_; i-- > 0;) {
      GiveAttributes(items_[i]);
    }
    return RemoveCopied(from_);
  }

 private:
  struct Item {
    std::string below;  ///< Path below the top, with a leading slash; empty for the top itself.
    struct stat state {};
  };

  int CopyAll() {
    items_.push_back({});
    for (; copied_ < items_.size(); ++copied_) {
      if (const int code = CopyOne(copied_)) {
        return code;
      }
      RuntimeBackgroundTask();
    }
    return 0;
  }

  int CopyOne(std::size_t index) {
    const std::string below = items_[index].below;
    const std::string from = from_ + below;
    const std::string to = to_ + below;
    struct stat& state = items_[index].state;
    if (lstat(from.c_str(), &state) != 0) {
      return errno;
    }
    if (S_ISLNK(state.st_mode)) {
      return CopyLink(from, to);
    }
    if (!S_ISDIR(state.st_mode)) {
      return CopyOneFile(from.c_str(), state, to.c_str());
    }
    // It gets its own permissions last, since they may not include writing.
    if (mkdir(to.c_str(), S_IRWXU) != 0) {
      return errno;
    }
    for (const std::string& name : NamesInFolder(from.c_str())) {
      items_.push_back({PathInFolder(below, name)});
    }
    return 0;
  }

  static int CopyLink(const std::string& from, const std::string& to) {
    std::array<char, PATH_MAX> target{};
    const ssize_t size = readlink(from.c_str(), target.data(), target.size() - 1);
    return size >= 0 && symlink(target.data(), to.c_str()) == 0 ? 0 : errno;
  }

  /// Sets owner, permissions and times. Errors are ignored, since the contents are complete.
  void GiveAttributes(const Item& item) const {
    const std::string to = to_ + item.below;
    const struct stat& state = item.state;
    // A plain user cannot give files away, but may set a group that he belongs to.
    if (lchown(to.c_str(), state.st_uid, state.st_gid) != 0) {
      (void)!lchown(to.c_str(), static_cast<uid_t>(-1), state.st_gid);
    }
    if (!S_ISLNK(state.st_mode)) {
      chmod(to.c_str(), state.st_mode & kKeptBits);
    }
    const std::array<timespec, 2> times{state.st_atim, state.st_mtim};
    utimensat(AT_FDCWD, to.c_str(), times.data(), AT_SYMLINK_NOFOLLOW);
  }

  /// Deletes the listed items from the tree at `top`. Items that were added meanwhile stay, with
  /// the folders that contain them. Returns 0 or the first error number.
  int RemoveCopied(const std::string& top) const {
    int code = 0;
    for (std::size_t i = copied_; i-- > 0;) {
      if (std::remove((top + items_[i].below).c_str()) != 0 && code == 0) {
        code = errno;
      }
      RuntimeBackgroundTask();
    }
    return code;
  }

  std::string from_;
  std::string to_;
  std::vector<Item> items_;
  std::size_t copied_ = 0;  ///< The first so many items have been copied.
};

bool ItemExists(const char* path) {
  struct stat state {};
  return lstat(path, &state) == 0;
}

/// Returns 0 if a move may replace the item at `to`, else an error number.
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

/// Whether `to` is inside the folder `from`, with all links resolved.
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

/// The rules of rename(2), which cannot be used here, for what may be moved where.
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
  return TreeMove(from, to).Run();
}

int MoveOnce(const char* from, const char* to) {
  // The kernel fails this one atomically if anything exists at the destination.
  int code = RenameOntoNothing(from, to);
  if (code != EEXIST && code != EXDEV) {
    return code;
  }
  if (ItemExists(to)) {
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

/// Linux requires write permission on a folder that gets another parent, since its ".." changes. A
/// folder that the user owns is given the permission for the move.
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
    lastErrorCode_ = ItemExists(SystemPath(path_)) ? 0 : ENOENT;
    return;
  }
  lastErrorCode_ = RenameOntoNothing(SystemPath(path_), path.c_str());
  if (lastErrorCode_ == 0) {
    path_ = path;
  }
}

}  // namespace zephin
