#include "platform/framework/files/folder_item_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <vector>

#include "platform/framework/application.h"
#include "platform/framework/files/file_descriptor.h"
#include "platform/framework/files/system_calls.h"
#include "platform/framework/files/system_paths.h"
#include "platform/framework/folder_item.h"

namespace zephin {
namespace {

/// A slow disk copies this much in about 20 ms, so that the window stays responsive.
constexpr std::int64_t kBlock = std::int64_t{4} << 20U;
constexpr std::int64_t kBuffer = std::int64_t{256} << 10U;

/// Lets the system copy. Returns the number of bytes that remain when it stops, for any reason.
std::int64_t CopyWithinSystem(const FileDescriptor& source, const FileDescriptor& target,
                              std::int64_t left) {
  while (left > 0) {
    const std::int64_t copied = CopyBySystem(source, target, std::min(left, kBlock));
    if (copied == 0) {
      break;
    }
    left -= copied;
    RuntimeBackgroundTask();
  }
  return left;
}

/// Copies up to `left` bytes, or to the end of the file. Returns 0 or an error number.
int CopyThroughMemory(const FileDescriptor& source, const FileDescriptor& target,
                      std::int64_t left) {
  std::vector<char> buffer(static_cast<std::size_t>(kBuffer));
  while (left > 0) {
    const auto wanted = static_cast<std::size_t>(std::min(left, kBuffer));
    const ssize_t count = read(source.Number(), buffer.data(), wanted);
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count < 0) {
      return errno;
    }
    if (count == 0) {
      break;
    }
    if (const int code = WriteAll(target, buffer.data(), static_cast<std::size_t>(count))) {
      return code;
    }
    left -= count;
    RuntimeBackgroundTask();
  }
  return 0;
}

/// Copies the `size` bytes that the file had at the start: a copy of a file that grows all the time
/// would never end. Returns 0 or an error number.
int CopyContents(const FileDescriptor& source, const FileDescriptor& target, std::int64_t size) {
  // Files that the system generates while they are read, as in /proc, report a size of 0.
  const std::int64_t left = size > 0 ? CopyWithinSystem(source, target, size) : INT64_MAX;
  // The system may have stopped because it cannot copy between these file systems, or because of an
  // error. Reading and writing does the copy in the first case and reports the error in the second.
  return left == 0 ? 0 : CopyThroughMemory(source, target, left);
}

/// Deletes a failed copy, unless another file has its name by now.
void TakeBack(const char* path, const struct stat& made) {
  struct stat now {};
  if (lstat(path, &now) == 0 && now.st_dev == made.st_dev && now.st_ino == made.st_ino) {
    unlink(path);
  }
}

/// Creates a folder with the permissions in `state`, plus all of them for the owner: on a read-only
/// disc no folder has write permission, but the copy is going to be filled.
int CopyFolderItself(const struct stat& state, const char* to) {
  const mode_t rights = (state.st_mode & (S_ISVTX | ACCESSPERMS)) | S_IRWXU;
  if (mkdir(to, rights) != 0) {
    return errno;
  }
  struct stat made {};
  if (lstat(to, &made) == 0 && (made.st_mode & ALLPERMS) != rights) {
    chmod(to, rights);
  }
  return 0;
}

/// Deletes what is at the destination of a copy. Returns 0 or an error number: EEXIST if `to` is
/// the source file itself.
int ClearPlace(const struct stat& source, const char* to) {
  struct stat there {};
  if (stat(to, &there) == 0) {
    if (there.st_dev == source.st_dev && there.st_ino == source.st_ino) {
      return EEXIST;
    }
    if (S_ISDIR(there.st_mode)) {
      return EISDIR;
    }
  }
  if (lstat(to, &there) != 0) {
    return errno == ENOENT ? 0 : errno;
  }
  if (!S_ISREG(there.st_mode) && !S_ISLNK(there.st_mode)) {
    return EINVAL;
  }
  return unlink(to) == 0 ? 0 : errno;
}

int CopyItem(const char* from, const char* to) {
  struct stat source {};
  if (stat(from, &source) != 0) {
    return errno;
  }
  if (S_ISDIR(source.st_mode)) {
    return CopyFolderItself(source, to);
  }
  // As a rule nothing exists at the destination, so that it is examined only after a failure.
  int code = CopyOneFile(from, source, to);
  if (code != EEXIST) {
    return code;
  }
  code = ClearPlace(source, to);
  if (code == EEXIST) {
    return 0;
  }
  return code == 0 ? CopyOneFile(from, source, to) : code;
}

}  // namespace

int CopyOneFile(const char* from, const struct stat& source, const char* to) {
  // Merely opening a pipe or device can have effects.
  if (!S_ISREG(source.st_mode)) {
    return EINVAL;
  }
  struct stat state {};
  const FileDescriptor input = OpenPlainFile(from, O_RDONLY, state);
  if (!input.IsOpen()) {
    return errno;
  }
  const mode_t rights = state.st_mode & ACCESSPERMS;
  FileDescriptor output(open(to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, rights));
  struct stat made {};
  if (!output.IsOpen() || fstat(output.Number(), &made) != 0) {
    return errno;
  }
  // The umask may have removed some of the permissions.
  if ((made.st_mode & ALLPERMS) != rights) {
    fchmod(output.Number(), rights);
  }
  int code = CopyContents(input, output, state.st_size);
  const int closed = output.Close();
  if (code == 0) {
    code = closed;
  }
  if (code != 0) {
    TakeBack(to, made);
  }
  return code;
}

void FolderItem::CopyFileTo(const Ref<FolderItem>& destination) {
  lastErrorCode_ = CopyItem(SystemPath(path_), SystemPath(destination->path_));
}

}  // namespace zephin
