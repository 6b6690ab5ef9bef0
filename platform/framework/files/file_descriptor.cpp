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
  // Linux closes the descriptor even if the call is interrupted. A second close could hit a file
  // that another thread has opened meanwhile.
  return number < 0 || close(number) == 0 || errno == EINTR ? 0 : errno;
}

FileDescriptor OpenPlainFile(const char* path, int flags, struct stat& state) {
  // O_NONBLOCK keeps the opening of a pipe from waiting for its other end; plain files ignore it.
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
      // Not an error to the system, but retrying could go on for ever.
      return ENOSPC;
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

}  // namespace zephin
