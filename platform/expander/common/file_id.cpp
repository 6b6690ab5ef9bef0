#include "platform/expander/common/file_id.h"

#include <fcntl.h>
#include <unistd.h>

namespace zephin::expander {

FileId FileId::Of(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 ? From(status) : FileId();
}

FileId FileId::At(int folder, const char* name) {
  struct stat status {};
  return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 ? From(status) : FileId();
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
