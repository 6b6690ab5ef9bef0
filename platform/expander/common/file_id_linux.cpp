#include "platform/expander/common/file_id.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace zephin::expander {
namespace {

FileId Ask(int folder, const char* name, int flags) {
  struct statx status {};
  if (::statx(folder, name, flags, STATX_INO | STATX_BTIME, &status) != 0) {
    return {};
  }
  constexpr std::int64_t kSecond = 1'000'000'000;
  const bool hasBirth = (status.stx_mask & STATX_BTIME) != 0;
  return {makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_ino,
          hasBirth ? status.stx_btime.tv_sec * kSecond + status.stx_btime.tv_nsec : 0};
}

}  // namespace

FileId FileId::Of(int descriptor) {
  return Ask(descriptor, "", AT_EMPTY_PATH);
}

FileId FileId::At(int folder, const char* name) {
  return Ask(folder, name, AT_SYMLINK_NOFOLLOW);
}

void FileIds::Add(const FileId& id) {
  const std::lock_guard<std::mutex> lock(mutex_);
  ids_.insert(id);
}

bool FileIds::Has(const FileId& id) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return ids_.contains(id);
}

void RemoveIfSame(int folder, const char* name, const FileId& id, int flags) {
  // The system has no call that deletes a file by its identity. Someone who replaces the file
  // between these two calls loses it; the time is as short as it can be.
  if (id && FileId::At(folder, name) == id) {
    (void)::unlinkat(folder, name, flags);
  }
}

}  // namespace zephin::expander
