// Reads the archive through a buffer of bounded size, ahead of what is asked for where entries lie
// one behind the other. One per thread.
#ifndef PLATFORM_EXPANDER_ZIP_WINDOW_READER_H_
#define PLATFORM_EXPANDER_ZIP_WINDOW_READER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/expander/common/block.h"
#include "platform/expander/zip/archive_file.h"

namespace zephin::expander {

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

#endif  // PLATFORM_EXPANDER_ZIP_WINDOW_READER_H_
