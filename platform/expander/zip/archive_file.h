// The archive's bytes. Opened once and read at any place by any thread through that one descriptor:
// its name may be deleted while it is read. It is not mapped into memory, since a file that is cut
// short under a mapping kills the process.
#ifndef PLATFORM_EXPANDER_ZIP_ARCHIVE_FILE_H_
#define PLATFORM_EXPANDER_ZIP_ARCHIVE_FILE_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/expander/common/descriptor.h"

namespace zephin::expander {

class ArchiveFile {
 public:
  /// Opens the file for reading. Gives 0, or the system's error code (EINVAL for what is no plain
  /// file).
  [[nodiscard]] int Open(const std::string& path);
  /// Takes over a descriptor that is open for reading; else as above.
  [[nodiscard]] int Take(Descriptor descriptor);

  /// The length when it was opened, in bytes.
  std::uint64_t Length() const { return length_; }

  /// Fills `target` with `size` bytes from `offset` on. Gives 0, the system's error code, or EIO
  /// when the file ends before.
  [[nodiscard]] int ReadAt(std::uint64_t offset, void* target, std::size_t size) const;

 private:
  Descriptor descriptor_;
  std::uint64_t length_ = 0;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_ARCHIVE_FILE_H_
