// The identity of a file, link or folder on disk, which doesn't depend on its name.
#ifndef PLATFORM_EXPANDER_COMMON_FILE_ID_H_
#define PLATFORM_EXPANDER_COMMON_FILE_ID_H_

#include <sys/stat.h>

#include <cstddef>
#include <mutex>
#include <unordered_set>

namespace zephin::expander {

/// Device and inode. False if there is no such file. The system may use the inode of a deleted file
/// again.
struct FileId {
  dev_t device = 0;
  ino_t inode = 0;

  static FileId From(const struct stat& status) { return {status.st_dev, status.st_ino}; }
  /// The identity of an open file; none if the call fails.
  static FileId Of(int descriptor);
  /// The identity of the item of that name in a folder. Links are not followed.
  static FileId At(int folder, const char* name);

  explicit operator bool() const { return inode != 0; }
  bool operator==(const FileId&) const = default;
};

/// A set of identities. Safe to use from several threads.
class FileIds {
 public:
  void Add(const FileId& id);
  bool Has(const FileId& id) const;

 private:
  struct Hash {
    std::size_t operator()(const FileId& id) const { return id.inode ^ (id.device << 48U); }
  };

  mutable std::mutex mutex_;
  std::unordered_set<FileId, Hash> ids_;
};

/// Deletes the file or link of that name in a folder, or the folder if it is empty (with
/// AT_REMOVEDIR in `flags`), but only if it still is the one with this identity. Errors are
/// ignored.
void RemoveIfSame(int folder, const char* name, const FileId& id, int flags);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_COMMON_FILE_ID_H_
