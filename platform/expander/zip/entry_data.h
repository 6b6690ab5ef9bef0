// The unpacked bytes of one entry, checked against the table of contents: exactly as many bytes as
// it states, with the stated CRC, from exactly the stated number of packed bytes.
#ifndef PLATFORM_EXPANDER_ZIP_ENTRY_DATA_H_
#define PLATFORM_EXPANDER_ZIP_ENTRY_DATA_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/expander/common/faults.h"
#include "platform/expander/zip/archive_file.h"
#include "platform/expander/zip/entry.h"
#include "platform/expander/zip/inflater.h"
#include "platform/expander/zip/zstd_decoder.h"

namespace zephin::expander {

/// What a thread needs to unpack entries, one at a time.
struct Unpacker {
  explicit Unpacker(const ArchiveFile& archive) : file(archive), reader(archive) {}

  const ArchiveFile& file;
  WindowReader reader;
  Inflater inflater;
  ZstdDecoder zstd;

  /// The one for an entry's method; nil for stored data.
  Decoder* DecoderFor(const Entry& entry);
};

/// Entries up to this size, packed and unpacked, are unpacked in one call.
constexpr std::size_t kSmallEntry = 1U << 20U;
bool IsSmall(const Entry& entry);

/// Reads a small entry whole. `buffer` has room for entry.size bytes. On success `data` are all of
/// its bytes, in `buffer` or in the unpacker, valid until either is used again; else the cause.
[[nodiscard]] Cause ReadSmallEntry(const Entry& entry, Unpacker& unpacker, char* buffer,
                                   std::string_view& data);

/// Reads an entry of any size block by block.
class EntryStream {
 public:
  /// Reads and checks the entry's local header. Uses the unpacker until its end.
  EntryStream(const Entry& entry, Unpacker& unpacker);

  /// Writes the next bytes to `block`, at most `size` (above 0), and returns their number: 0 at the
  /// end, once all checks have passed; nothing on a fault, then and in every later call.
  std::optional<std::size_t> Next(char* block, std::size_t size);

  /// Why Next returned nothing.
  const Cause& Fault() const { return fault_; }

 private:
  std::optional<std::size_t> Refuse(const Cause& cause);
  std::optional<std::size_t> Stored(char* block, std::size_t size);
  std::optional<std::size_t> Decoded(char* block, std::size_t size);
  bool FeedDecoder();
  bool EndsHere();

  const Entry& entry_;
  Unpacker& unpacker_;
  Decoder* const decoder_;
  /// Where the next packed byte is in the file, and the number of those left.
  std::uint64_t place_ = 0;
  std::uint64_t packedLeft_ = 0;
  /// Unpacked bytes that are still to come.
  std::uint64_t left_ = 0;
  std::uint32_t crc_ = 0;
  Cause fault_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_ENTRY_DATA_H_
