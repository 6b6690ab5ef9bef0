// The archive's bytes. Opened once and read at any place by any thread through that one descriptor:
// its name may be deleted while it is read. It is not mapped into memory, since a file that is cut
// short under a mapping kills the process.
#ifndef PLATFORM_EXPANDER_ZIP_ARCHIVE_FILE_H_
#define PLATFORM_EXPANDER_ZIP_ARCHIVE_FILE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/expander/common/resources.h"

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

/// Reads the archive through a buffer of bounded size, ahead of what is asked for where entries lie
/// one behind the other. One per thread.
class WindowReader {
 public:
  /// Most bytes that one view can have: the largest header, or a small entry with its header.
  static constexpr std::size_t kCapacity = 1280U << 10U;

  explicit WindowReader(const ArchiveFile& file) : file_(file), buffer_(kCapacity) {}

  /// Nothing from `end` on is read ahead: other threads read there.
  void SetEnd(std::uint64_t end) { end_ = end; }

  /// `size` bytes (1 to kCapacity) at `offset`, valid until the next call; empty when they can't be
  /// read, and then Code() is the system's error code.
  std::string_view View(std::uint64_t offset, std::size_t size);
  int Code() const { return code_; }

 private:
  const ArchiveFile& file_;
  Block buffer_;
  std::uint64_t offset_ = 0;
  std::size_t filled_ = 0;
  std::uint64_t end_ = 0;
  int code_ = 0;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_ARCHIVE_FILE_H_
