#include "platform/framework/files/move_tree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <utility>
#include <vector>

#include "platform/framework/application.h"
#include "platform/framework/files/file_copy.h"
#include "platform/framework/files/folder_names.h"
#include "platform/framework/files/path_bytes.h"

namespace zephin {
namespace {

constexpr mode_t kKeptBits = S_ISVTX | ACCESSPERMS;

/// The trees are walked by a list of paths, each folder before what it holds; from its end it is
/// the order in which they can be removed.
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
    std::string below;  ///< Path below the top, with a slash in front; empty for the top itself.
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
    // Its own rights come last: it may be one that can't be written.
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

  /// The copy is whole without them, so that none of these is a failure.
  void GiveAttributes(const Item& item) const {
    const std::string to = to_ + item.below;
    const struct stat& state = item.state;
    if (lchown(to.c_str(), state.st_uid, state.st_gid) != 0) {
      lchown(to.c_str(), static_cast<uid_t>(-1), state.st_gid);
    }
    if (!S_ISLNK(state.st_mode)) {
      chmod(to.c_str(), state.st_mode & kKeptBits);
    }
    const std::array<timespec, 2> times{state.st_atim, state.st_mtim};
    utimensat(AT_FDCWD, to.c_str(), times.data(), AT_SYMLINK_NOFOLLOW);
  }

  /// Removes the items of the list from the tree at `top`. What has been added meanwhile stays,
  /// with the folders that hold it. 0, or the first failure's code.
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
  std::size_t copied_ = 0;  ///< So many of them, from the first, have a copy.
};

}  // namespace

int MoveTree(const std::string& from, const std::string& to) {
  return TreeMove(from, to).Run();
}

}  // namespace zephin
