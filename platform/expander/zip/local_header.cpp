#include "platform/expander/zip/local_header.h"

#include <string_view>

#include "platform/expander/zip/header_fields.h"
#include "platform/expander/zip/little_endian.h"

namespace zephin::expander {
namespace {

constexpr std::uint32_t kSignature = 0x04034B50;
constexpr std::uint32_t kAllBits = 0xFFFFFFFF;
constexpr const char* kDisagrees = "its own header says otherwise than the table of contents";

/// The header's fixed part: signature 4, needed 2, flags 2, method 2, time 2, date 2, CRC 4, packed
/// size 4, size 4, lengths of name and extra 2 each.
struct Fixed {
  std::uint16_t flags = 0;
  std::uint16_t method = 0;
  std::uint32_t crc = 0;
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
  std::size_t nameLength = 0;
  std::size_t extraLength = 0;
};

bool ReadFixed(std::string_view bytes, Fixed& fixed) {
  FieldReader reader(bytes);
  const bool known = reader.U32() == kSignature;
  (void)reader.U16();
  fixed.flags = reader.U16();
  fixed.method = reader.U16();
  (void)reader.U32();
  fixed.crc = reader.U32();
  fixed.packedSize = reader.U32();
  fixed.size = reader.U32();
  fixed.nameLength = reader.U16();
  fixed.extraLength = reader.U16();
  return known;
}

/// A writer that doesn't know sizes and CRC in advance writes zeros here, and the values behind the
/// data.
bool AgreesInSizes(const Entry& entry, const Fixed& fixed) {
  const bool later = (fixed.flags & kFlagDescriptor) != 0;
  const auto agrees = [later](std::uint64_t here, std::uint64_t there) {
    return here == there || (later && here == 0);
  };
  return agrees(fixed.crc, entry.crc) && agrees(fixed.size, entry.size) &&
         agrees(fixed.packedSize, entry.packedSize);
}

}  // namespace

Cause FindData(const Entry& entry, WindowReader& reader, std::uint64_t& offset) {
  const std::size_t least = kLocalHeaderSize + entry.storedName.size();
  std::string_view header = reader.View(entry.offset, least);
  if (header.empty()) {
    return Cause::System(reader.Code());
  }
  Fixed fixed;
  if (!ReadFixed(header.substr(0, kLocalHeaderSize), fixed) || fixed.method != entry.method ||
      ((fixed.flags ^ entry.flags) & kEncryptionFlags) != 0 ||
      fixed.nameLength != entry.storedName.size() ||
      header.substr(kLocalHeaderSize) != entry.storedName) {
    return Cause::Fixed(kDisagrees);
  }
  if (fixed.size == kAllBits || fixed.packedSize == kAllBits) {
    header = reader.View(entry.offset, least + fixed.extraLength);
    if (header.empty()) {
      return Cause::System(reader.Code());
    }
    const ExtraFields extra =
        ReadExtraFields(header.substr(least), entry.storedName,
                        {fixed.size == kAllBits, fixed.packedSize == kAllBits, false});
    fixed.size = extra.size.value_or(fixed.size);
    fixed.packedSize = extra.packedSize.value_or(fixed.packedSize);
  }
  if (!AgreesInSizes(entry, fixed)) {
    return Cause::Fixed(kDisagrees);
  }
  const std::uint64_t start = entry.offset + least + fixed.extraLength;
  if (start > entry.end || entry.packedSize > entry.end - start) {
    return Cause::Fixed(kSharesBytes);
  }
  offset = start;
  return {};
}

}  // namespace zephin::expander
