// The identity of a file, link or folder on disk, which doesn't depend on its name.
#ifndef PLATFORM_EXPANDER_COMMON_FILE_ID_H_
#define PLATFORM_EXPANDER_COMMON_FILE_ID_H_

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <unordered_set>

namespace zephin::expander {

/// Device, inode and time of birth. False if there is no such file. The system uses the inode of a
/// deleted file again, often at once; the time tells the two files apart.
struct FileId {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t birth = 0;  ///< In nanoseconds since 1970; 0 if the disk does not record it.

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
