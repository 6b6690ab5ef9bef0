// The plain bytes of one entry, block by block, checked against what the central directory states:
// never a byte more, and an end only after the right number of them with the right CRC.
#ifndef PLATFORM_EXPANDER_ZIP_ENTRY_STREAM_H_
#define PLATFORM_EXPANDER_ZIP_ENTRY_STREAM_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/expander/zip/archive_file.h"
#include "platform/expander/zip/entry.h"
#include "platform/expander/zip/inflater.h"

namespace zephin::expander {

/// What a thread needs to take entries out of the archive.
struct Unpacker {
  explicit Unpacker(const ArchiveFile& archive) : file(archive), reader(archive) {}

  const ArchiveFile& file;
  WindowReader reader;
  Inflater inflater;
};

class EntryStream {
 public:
  /// Reads and checks the entry's local header. One stream per unpacker at a time.
  EntryStream(const Entry& entry, Unpacker& unpacker);

  /// All bytes at once, if the entry is small; they stay until the unpacker's next use. `buffer`
  /// has kSmall bytes. Nothing on a fault.
  static constexpr std::size_t kSmall = 1U << 20U;
  bool Small() const { return entry_.size <= kSmall && entry_.packedSize <= kSmall; }
  std::optional<std::string_view> Whole(char* buffer);

  /// The next bytes, at most `size` (above 0); 0 at the end, nothing on a fault. Not after Whole.
  std::optional<std::size_t> Next(char* block, std::size_t size);

  /// Why there was nothing.
  std::string Fault() const;

 private:
  std::optional<std::size_t> Refuse(const char* why);
  std::optional<std::size_t> Fail(int code);
  std::optional<std::size_t> Stored(char* block, std::size_t size);
  std::optional<std::size_t> Deflated(char* block, std::size_t size);
  bool FeedInflater();
  bool EndsHere();

  const Entry& entry_;
  Unpacker& unpacker_;
  std::uint64_t place_ = 0;
  std::uint64_t packedLeft_ = 0;
  std::uint64_t left_ = 0;
  std::uint32_t crc_ = 0;
  const char* refusal_ = nullptr;
  int code_ = 0;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_ENTRY_STREAM_H_
