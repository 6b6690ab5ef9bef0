#include "platform/expander/disk/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace zephin::expander {

Cause ClearName(int folder, const char* leaf) {
  if (::unlinkat(folder, leaf, 0) == 0 || errno == ENOENT) {
    return {};
  }
  const int code = errno;
  struct stat status {};
  const bool isFolder =
      ::fstatat(folder, leaf, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
  return Cause::System(isFolder ? EISDIR : code);
}

OutputFile::~OutputFile() {
  if (descriptor_.IsOpen()) {
    RemoveIfSame(folder_, leaf_.c_str(), id_, 0);
  }
}

Cause OutputFile::Create(int folder, std::string_view leaf, const Attributes& attributes,
                         mode_t mask, Existing existing) {
  constexpr mode_t kPlainMode = 0666;
  folder_ = folder;
  leaf_ = leaf;
  const mode_t mode = attributes.hasMode ? attributes.mode : kPlainMode;
  changeMode_ = attributes.hasMode && (mode & mask) != 0;
  const auto create = [&] {
    return Descriptor(::openat(folder, leaf_.c_str(),
                               O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
  };
  descriptor_ = create();
  if (!descriptor_.IsOpen() && errno == EEXIST && existing == Existing::Replace) {
    if (const Cause cause = ClearName(folder, leaf_.c_str())) {
      return cause;
    }
    descriptor_ = create();
  }
  if (!descriptor_.IsOpen()) {
    return Cause::System(errno);
  }
  id_ = FileId::Of(descriptor_.Number());
  return {};
}

Cause OutputFile::Write(const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(descriptor_.Number(), bytes, size);
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      return Cause::System(written < 0 ? errno : ENOSPC);
    }
    bytes += written;
    size -= static_cast<std::size_t>(written);
  }
  return {};
}

Cause OutputFile::SetAttributes(const Attributes& attributes) {
  const int descriptor = descriptor_.Number();
  Cause cause;
  if (changeMode_ && ::fchmod(descriptor, attributes.mode) != 0) {
    cause = Cause::System(errno, kModeNotSet);
  }
  const std::array<timespec, 2> times = {timespec{0, UTIME_OMIT},
                                         timespec{attributes.seconds, attributes.nanoseconds}};
  if (::futimens(descriptor, times.data()) != 0 && !cause) {
    cause = Cause::System(errno, kTimeNotSet);
  }
  return cause;
}

Cause OutputFile::Keep() {
  const Cause cause = Cause::System(descriptor_.Close());
  if (cause) {
    RemoveIfSame(folder_, leaf_.c_str(), id_, 0);
  }
  return cause;
}

bool OutputFile::StillThere() const {
  struct stat status {};
  return ::fstat(descriptor_.Number(), &status) == 0 && status.st_nlink > 0;
}

}  // namespace zephin::expander
