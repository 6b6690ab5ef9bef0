#include "platform/framework/files/system_calls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <tuple>

#include "platform/framework/files/file_descriptor.h"

namespace zephin {

int RenameOntoNothing(const char* from, const char* to) {
  if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) {
    return 0;
  }
  if (errno != EINVAL && errno != ENOSYS) {
    return errno;
  }
  // Not every file system supports the flag. Without it, an item that appears between the two calls
  // is replaced.
  struct stat state {};
  if (lstat(to, &state) == 0) {
    return EEXIST;
  }
  return std::rename(from, to) == 0 ? 0 : errno;
}

void ChangeRights(const char* path, unsigned rights) {
  // The C library needs four system calls for this one, which matters for many thousand files.
  constexpr long kFchmodat2 = 452;
  if (syscall(kFchmodat2, AT_FDCWD, path, rights, AT_SYMLINK_NOFOLLOW) != 0 && errno == ENOSYS) {
    (void)!fchmodat(AT_FDCWD, path, rights, AT_SYMLINK_NOFOLLOW);
  }
}

std::int64_t CopyBySystem(const FileDescriptor& source, const FileDescriptor& target,
                          std::int64_t count) {
  // Copies by sharing blocks where the file system can, else within the kernel.
  ssize_t copied = 0;
  do {
    copied = copy_file_range(source.Number(), nullptr, target.Number(), nullptr,
                             static_cast<std::size_t>(count), 0);
  } while (copied < 0 && errno == EINTR);
  return copied < 0 ? 0 : copied;
}

void GiveBackRoom(const FileDescriptor& file, std::int64_t position, std::int64_t count) {
  struct stat state {};
  if (fstat(file.Number(), &state) == 0 && state.st_nlink == 0) {
    std::ignore =
        fallocate(file.Number(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, position, count);
  }
}

}  // namespace zephin
