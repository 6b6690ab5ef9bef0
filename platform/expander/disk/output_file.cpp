#include "platform/expander/disk/output_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

#include "platform/expander/zip/inflater.h"

namespace zephin::expander {
namespace {

/// The same in each run, so that the next one finds what a killed one has left.
std::string TemporaryName(const std::string& leaf) {
  return ".zephin-expanding-" + std::to_string(Crc32(0, leaf.data(), leaf.size()));
}

/// Deletes a file that a killed process has left under a temporary name. False if it is another
/// kind of item, or a running process still writes it.
bool RemoveLeftover(int folder, const std::string& name) {
  const Descriptor file(
      ::openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0));
  struct stat status {};
  const bool removed = file.IsOpen() && ::fstat(file.Number(), &status) == 0 &&
                       S_ISREG(status.st_mode) && ::flock(file.Number(), LOCK_EX | LOCK_NB) == 0 &&
                       ::unlinkat(folder, name.c_str(), 0) == 0;
  if (!removed) {
    errno = EEXIST;
  }
  return removed;
}

}  // namespace

Cause CheckReplaceable(int folder, const char* leaf, const Replacing& replacing) {
  struct stat status {};
  if (::fstatat(folder, leaf, &status, AT_SYMLINK_NOFOLLOW) != 0) {
    return Cause::System(errno == ENOENT ? 0 : errno);
  }
  if (S_ISDIR(status.st_mode)) {
    // Its contents may be the user's.
    return Cause::System(EISDIR);
  }
  if (replacing.made.Has(FileId::At(folder, leaf))) {
    return Cause::Fixed("has the same name as another entry on this disk", Reason::InTheWay);
  }
  return Cause::System(replacing.existing == Existing::Keep ? EEXIST : 0);
}

Cause ClearName(int folder, const char* leaf, const Replacing& replacing) {
  if (const Cause cause = CheckReplaceable(folder, leaf, replacing)) {
    return cause;
  }
  return Cause::System(::unlinkat(folder, leaf, 0) == 0 || errno == ENOENT ? 0 : errno);
}

OutputFile::~OutputFile() {
  if (descriptor_.IsOpen() && !name_.empty()) {
    RemoveIfSame(folder_, name_.c_str(), id_, 0);
  }
}

Cause OutputFile::Create(int folder, std::string_view leaf, const Attributes& attributes,
                         mode_t mask, Naming naming) {
  constexpr mode_t kPlainMode = 0666;
  folder_ = folder;
  leaf_ = leaf;
  const mode_t mode = attributes.hasMode ? attributes.mode : kPlainMode;
  // The system removes the mask's bits from the mode of a new file. Without such bits the mode is
  // right from the start, which saves a call for most files.
  changeMode_ = attributes.hasMode && (mode & mask) != 0;
  if (const Cause cause = naming == Naming::AtOnce ? CreateNamed(mode) : CreateUnnamed(mode)) {
    return cause;
  }
  id_ = FileId::Of(descriptor_.Number());
  replacing_.made.Add(id_);
  return {};
}

Descriptor OutputFile::Open(const std::string& name, mode_t mode) const {
  return Descriptor(
      ::openat(folder_, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
}

Cause OutputFile::CreateNamed(mode_t mode) {
  name_ = leaf_;
  // Names are rarely taken, so the file is made first and the name cleared only if that fails.
  descriptor_ = Open(name_, mode);
  if (!descriptor_.IsOpen() && errno == EEXIST) {
    if (const Cause cause = ClearName(folder_, leaf_.c_str(), replacing_)) {
      return cause;
    }
    descriptor_ = Open(name_, mode);
  }
  return Cause::System(descriptor_.IsOpen() ? 0 : errno);
}

Cause OutputFile::CreateUnnamed(mode_t mode) {
  // The system frees an unnamed file with its process. FAT and network disks have none.
  descriptor_ = Descriptor(::openat(folder_, ".", O_WRONLY | O_TMPFILE | O_CLOEXEC, mode));
  if (descriptor_.IsOpen()) {
    return {};
  }
  name_ = TemporaryName(leaf_);
  descriptor_ = Open(name_, mode);
  if (!descriptor_.IsOpen() && errno == EEXIST && RemoveLeftover(folder_, name_)) {
    descriptor_ = Open(name_, mode);
  }
  if (descriptor_.IsOpen()) {
    // Held until the file is closed; says that it is no leftover.
    (void)::flock(descriptor_.Number(), LOCK_EX | LOCK_NB);
    return {};
  }
  return Cause::System(errno);
}

Cause OutputFile::Write(const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(descriptor_.Number(), bytes, size);
    if (written < 0 && errno == EINTR) {
      continue;
    }
    // Some disks report "nothing written" in place of an error when they are full.
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
  // An old file of that name is replaced last, when the disk has reported no lost data.
  Cause cause = name_.empty() ? GiveName() : Cause();
  const int code = descriptor_.Close();
  if (!cause) {
    cause = Cause::System(code);
  }
  if (!cause && name_ != leaf_) {
    cause = MoveToLeaf();
  }
  if (cause && !name_.empty()) {
    RemoveIfSame(folder_, name_.c_str(), id_, 0);
  }
  return cause;
}

/// Names an unnamed file: its final name if that is free, else a temporary one.
Cause OutputFile::GiveName() {
  // Linking the descriptor itself needs a privilege; linking its name in /proc does not.
  const std::string self = "/proc/self/fd/" + std::to_string(descriptor_.Number());
  for (const std::string& name : {leaf_, TemporaryName(leaf_)}) {
    const auto link = [&] {
      return ::linkat(AT_FDCWD, self.c_str(), folder_, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    };
    if (link() || (errno == EEXIST && name != leaf_ && RemoveLeftover(folder_, name) && link())) {
      name_ = name;
      return {};
    }
    if (errno != EEXIST) {
      break;
    }
  }
  return Cause::System(errno);
}

Cause OutputFile::MoveToLeaf() {
  if (const Cause cause = CheckReplaceable(folder_, leaf_.c_str(), replacing_)) {
    return cause;
  }
  const auto move = [&](unsigned flags) {
    return ::renameat2(folder_, name_.c_str(), folder_, leaf_.c_str(), flags) == 0;
  };
  // Some disks can't move without replacing. There the look above must do.
  const bool moved = move(replacing_.existing == Existing::Keep ? RENAME_NOREPLACE : 0) ||
                     (errno == EINVAL && move(0));
  return Cause::System(moved ? 0 : errno);
}

bool OutputFile::StillThere() const {
  struct stat status {};
  return ::fstat(name_.empty() ? folder_ : descriptor_.Number(), &status) == 0 &&
         status.st_nlink > 0;
}

}  // namespace zephin::expander
