#include "platform/framework/files/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace zephin {
namespace {

constexpr mode_t kReadAndWrite = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;

}  // namespace

int FileDescriptor::Close() {
  const int number = Release();
  // The number is free even after an interruption: it must not be closed a second time.
  return number < 0 || close(number) == 0 || errno == EINTR ? 0 : errno;
}

FileDescriptor OpenPlainFile(const char* path, int flags, struct stat& state) {
  FileDescriptor file(open(path, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, kReadAndWrite));
  if (!file.IsOpen() || fstat(file.Number(), &state) != 0) {
    return {};
  }
  if (!S_ISREG(state.st_mode)) {
    file.Close();
    errno = EINVAL;
  }
  return file;
}

int WriteAll(const FileDescriptor& target, const char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t written = write(target.Number(), bytes, count);
    if (written > 0) {
      bytes += written;
      count -= static_cast<std::size_t>(written);
    } else if (written == 0) {
      return ENOSPC;
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

}  // namespace zephin
