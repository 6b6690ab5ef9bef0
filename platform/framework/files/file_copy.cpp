#include "platform/framework/files/file_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <vector>

#include "platform/framework/application.h"
#include "platform/framework/files/descriptor.h"
#include "platform/framework/files/system_calls.h"

namespace zephin {
namespace {

/// What a slow disk takes in some 20 ms, so that the window stays alive.
constexpr std::int64_t kBlock = std::int64_t{4} << 20U;
constexpr std::int64_t kBuffer = std::int64_t{256} << 10U;

/// The number of bytes that are still to be copied when the system would not go on, for whatever
/// reason.
std::int64_t CopyWithinSystem(const Descriptor& source, const Descriptor& target,
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

/// Reads and writes up to `left` bytes or to the end of the file. 0, or a code.
int CopyThroughMemory(const Descriptor& source, const Descriptor& target, std::int64_t left) {
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

/// Copies what the file held at the start: one that grows all the time would have no end. 0, or a
/// code.
int CopyContents(const Descriptor& source, const Descriptor& target, std::int64_t size) {
  // Files that the system makes up as they are read have a size of 0.
  const std::int64_t left = size > 0 ? CopyWithinSystem(source, target, size) : INT64_MAX;
  // It may have stopped because the file systems can't do it, or for a fault: reading and writing
  // does the one and tells the other.
  return left == 0 ? 0 : CopyThroughMemory(source, target, left);
}

/// Removes a copy that has failed, unless something else has been put at its place meanwhile.
void TakeBack(const char* path, const struct stat& made) {
  struct stat now {};
  if (lstat(path, &now) == 0 && now.st_dev == made.st_dev && now.st_ino == made.st_ino) {
    unlink(path);
  }
}

}  // namespace

int CopyOneFile(const char* from, const struct stat& source, const char* to) {
  // A pipe or device is not even opened: that alone can have effects.
  if (!S_ISREG(source.st_mode)) {
    return EINVAL;
  }
  struct stat state {};
  const Descriptor input = OpenPlainFile(from, O_RDONLY, state);
  if (!input.IsOpen()) {
    return errno;
  }
  const mode_t rights = state.st_mode & ACCESSPERMS;
  Descriptor output(open(to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, rights));
  struct stat made {};
  if (!output.IsOpen() || fstat(output.Number(), &made) != 0) {
    return errno;
  }
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

}  // namespace zephin
