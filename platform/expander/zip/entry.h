// One entry of an archive, as its table of contents describes it.
#ifndef PLATFORM_EXPANDER_ZIP_ENTRY_H_
#define PLATFORM_EXPANDER_ZIP_ENTRY_H_

#include <cstdint>
#include <string_view>

#include "platform/expander/common/file_id.h"

namespace zephin::expander {

enum class EntryKind : std::uint8_t { File, Folder, Link };

/// What is set on a file or folder after it is made.
struct Attributes {
  /// Permission bits for chmod without set-id and sticky bits; valid only if `hasMode`.
  std::uint16_t mode = 0;
  bool hasMode = false;
  /// Time of the last change since 1970 (UTC), in seconds and nanoseconds.
  std::uint32_t nanoseconds = 0;
  std::int64_t seconds = 0;
};

struct Entry {
  /// The name's bytes in the archive. Both names point into memory of the CentralDirectory.
  std::string_view storedName;
  /// The decoded name, relative to the target folder: no empty part, no "." or "..", no "/" at
  /// either end. Empty for the target folder itself.
  std::string_view path;
  /// Offset of the local header in the file, in bytes.
  std::uint64_t offset = 0;
  /// First byte in the file that can't belong to this entry: the next entry's offset or that of the
  /// table of contents. Not set (0) for an entry that is outside of the archive.
  std::uint64_t end = 0;
  /// In bytes, as the table of contents states them.
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
  /// Why the entry is refused, a fixed text; nil if it is not.
  const char* refusal = nullptr;
  Attributes attributes;
  std::uint32_t crc = 0;
  /// Place in the archive's order, from 1.
  std::uint32_t order = 0;
  /// Index in Plan::folders of the folder that contains it.
  std::uint32_t folder = 0;
  std::uint16_t flags = 0;
  std::uint16_t method = 0;
  EntryKind kind = EntryKind::File;
  /// True once the file or link is on disk whole.
  bool made = false;
  /// The identity of what was made.
  FileId id;

  /// Last part of the path.
  std::string_view Leaf() const { return path.substr(path.rfind('/') + 1); }
};

/// Why an entry is refused whose bytes belong to another entry too.
constexpr const char* kSharesBytes = "shares bytes of the archive with another entry";

constexpr std::uint16_t kMethodStored = 0;
constexpr std::uint16_t kMethodDeflated = 8;
constexpr std::uint16_t kMethodZstd = 93;

/// Whether the expander can unpack an entry of this method.
constexpr bool IsKnownMethod(std::uint16_t method) {
  return method == kMethodStored || method == kMethodDeflated || method == kMethodZstd;
}

constexpr std::uint16_t kFlagEncrypted = 1U << 0U;
constexpr std::uint16_t kFlagDescriptor = 1U << 3U;
constexpr std::uint16_t kFlagStrongEncryption = 1U << 6U;
constexpr std::uint16_t kFlagUtf8 = 1U << 11U;
constexpr std::uint16_t kFlagMaskedHeaders = 1U << 13U;
/// Each of them says that the entry is encrypted.
constexpr std::uint16_t kEncryptionFlags =
    kFlagEncrypted | kFlagStrongEncryption | kFlagMaskedHeaders;

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_ENTRY_H_
