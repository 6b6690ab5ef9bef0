// One entry of an archive, as its central directory tells of it.
#ifndef PLATFORM_EXPANDER_ZIP_ENTRY_H_
#define PLATFORM_EXPANDER_ZIP_ENTRY_H_

#include <cstdint>
#include <string_view>

namespace zephin::expander {

enum class EntryKind : std::uint8_t { File, Folder, Link };

/// What is set on a file or folder once it stands.
struct Attributes {
  /// Permission bits as chmod takes them, never set-id or sticky ones; used only if `hasMode`.
  std::uint16_t mode = 0;
  bool hasMode = false;
  /// Time of the last change since 1970 (UTC).
  std::uint32_t nanoseconds = 0;
  std::int64_t seconds = 0;
};

struct Entry {
  /// Names point into memory of the CentralDirectory. `storedName` has the bytes as the archive
  /// holds them; `path` is what they stand for below the folder: no empty part, no "." or "..", no
  /// "/" at either end. `path` is empty for the folder itself.
  std::string_view storedName;
  std::string_view path;
  /// Places in the file, in bytes: of the local header, and of what follows the entry at the
  /// latest.
  std::uint64_t offset = 0;
  std::uint64_t limit = 0;
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
  /// Why the entry is refused, a fixed text; nil if it isn't.
  const char* refusal = nullptr;
  Attributes attributes;
  std::uint32_t crc = 0;
  /// Place in the archive's order, from 1.
  std::uint32_t order = 0;
  /// Index of the folder that holds it, in Plan::folders.
  std::uint32_t folder = 0;
  std::uint16_t flags = 0;
  std::uint16_t method = 0;
  EntryKind kind = EntryKind::File;
  /// Set when the file was made; it may have gone again with its data's fault.
  bool made = false;

  /// Last part of the path.
  std::string_view Leaf() const { return path.substr(path.rfind('/') + 1); }
};

constexpr std::uint16_t kMethodStored = 0;
constexpr std::uint16_t kMethodDeflated = 8;
constexpr std::uint16_t kFlagEncrypted = 1U << 0U;
constexpr std::uint16_t kFlagDescriptor = 1U << 3U;
constexpr std::uint16_t kFlagStrongEncryption = 1U << 6U;
constexpr std::uint16_t kFlagUtf8 = 1U << 11U;
constexpr std::uint16_t kFlagMaskedHeaders = 1U << 13U;

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_ENTRY_H_
