// Access to the archive's bytes. The file is opened once, so its name may be deleted while it is
// read. It is not mapped into memory: truncating a mapped file kills the process.
#ifndef PLATFORM_EXPANDER_ZIP_ARCHIVE_FILE_H_
#define PLATFORM_EXPANDER_ZIP_ARCHIVE_FILE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/expander/common/resources.h"

namespace zephin::expander {

/// Safe to read from several threads.
class ArchiveFile {
 public:
  /// Opens the file for reading. Returns 0 or the system's error code (EISDIR for a folder, EINVAL
  /// for other things that are no plain file).
  [[nodiscard]] int Open(const std::string& path);
  /// The same with a descriptor that is open for reading; takes ownership of it.
  [[nodiscard]] int Take(Descriptor descriptor);

  /// The file's length in bytes when it was opened.
  std::uint64_t Length() const { return length_; }

  /// Reads exactly `size` bytes at `offset` into `target`. Returns 0, the system's error code, or
  /// EIO if the file ends before them.
  [[nodiscard]] int ReadAt(std::uint64_t offset, void* target, std::size_t size) const;

 private:
  Descriptor descriptor_;
  std::uint64_t length_ = 0;
};

/// Reads the archive through a buffer, with read-ahead for entries that follow each other. Each
/// thread has its own.
class WindowReader {
 public:
  /// The most bytes that one view can have: enough for a small entry with its header.
  static constexpr std::size_t kCapacity = 1280U << 10U;

  explicit WindowReader(const ArchiveFile& file) : file_(file), buffer_(kCapacity) {}

  /// Limits the read-ahead to the part of the file before `end`: other threads read the rest.
  void SetEnd(std::uint64_t end) { end_ = end; }

  /// Returns `size` bytes (1 to kCapacity) at `offset`, valid until the next call. Empty if they
  /// can't be read; then Code() is the system's error code.
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
