#include "platform/expander/zip/directory_end.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "platform/expander/common/faults.h"
#include "platform/expander/zip/central_directory.h"
#include "platform/expander/zip/little_endian.h"

namespace zephin::expander {
namespace {

constexpr std::uint32_t kEndSignature = 0x06054B50;
constexpr std::uint32_t kLocatorSignature = 0x07064B50;
constexpr std::uint32_t kEnd64Signature = 0x06064B50;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kLocatorSize = 20;
constexpr std::size_t kEnd64Size = 56;
constexpr std::size_t kLongestComment = 0xFFFF;

/// The record's fields as stored, and its own offset in the file.
struct EndFields {
  std::uint64_t place = 0;
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
  std::uint64_t count = 0;
  bool shortCount = true;
  bool severalDiscs = false;
};

bool BeginsWith(const ArchiveFile& file, std::uint64_t offset, std::uint32_t signature) {
  std::array<char, 4> bytes{};
  return file.ReadAt(offset, bytes.data(), bytes.size()) == 0 &&
         FieldReader(std::string_view(bytes.data(), bytes.size())).U32() == signature;
}

/// signature 4, disc 2, disc of the directory 2, entries here 2, entries 2, size 4, offset 4,
/// comment's length 2, comment
EndFields ReadEnd(std::string_view record) {
  FieldReader reader(record);
  (void)reader.U32();
  EndFields fields;
  const std::uint16_t disc = reader.U16();
  const std::uint16_t directoryDisc = reader.U16();
  const std::uint16_t countHere = reader.U16();
  fields.count = reader.U16();
  fields.size = reader.U32();
  fields.offset = reader.U32();
  fields.severalDiscs = disc != directoryDisc || countHere != fields.count;
  return fields;
}

/// signature 4, length of the rest 8, made by 2, needed 2, disc 4, disc of the directory 4, entries
/// here 8, entries 8, size 8, offset 8
bool ReadEnd64(const ArchiveFile& file, std::uint64_t place, EndFields& fields) {
  std::array<char, kEnd64Size> bytes{};
  if (file.ReadAt(place, bytes.data(), bytes.size()) != 0) {
    return false;
  }
  FieldReader reader(std::string_view(bytes.data(), bytes.size()));
  if (reader.U32() != kEnd64Signature) {
    return false;
  }
  (void)reader.U64();
  (void)reader.U32();
  const std::uint32_t disc = reader.U32();
  const std::uint32_t directoryDisc = reader.U32();
  const std::uint64_t countHere = reader.U64();
  fields.count = reader.U64();
  fields.size = reader.U64();
  fields.offset = reader.U64();
  fields.place = place;
  fields.shortCount = false;
  fields.severalDiscs = disc != directoryDisc || countHere != fields.count;
  return true;
}

/// Reads the 64-bit record if a locator in front of the old record points to it: signature 4, disc
/// 4, offset 8, discs 4. The offset is wrong if something precedes the archive; then the record is
/// the one right before the locator.
void PreferEnd64(const ArchiveFile& file, EndFields& fields) {
  if (fields.place < kLocatorSize) {
    return;
  }
  const std::uint64_t locatorPlace = fields.place - kLocatorSize;
  std::array<char, kLocatorSize> bytes{};
  if (file.ReadAt(locatorPlace, bytes.data(), bytes.size()) != 0) {
    return;
  }
  FieldReader reader(std::string_view(bytes.data(), bytes.size()));
  if (reader.U32() != kLocatorSignature) {
    return;
  }
  (void)reader.U32();
  const std::uint64_t stated = reader.U64();
  if (stated <= locatorPlace && ReadEnd64(file, stated, fields)) {
    return;
  }
  if (locatorPlace >= kEnd64Size) {
    (void)ReadEnd64(file, locatorPlace - kEnd64Size, fields);
  }
}

/// Finds the last record whose comment ends at the file's end; else the last one with other bytes
/// behind it, since some tools pad the file.
bool FindRecord(std::string_view tail, std::size_t& place) {
  bool found = false;
  for (std::size_t i = tail.size() - kEndSize + 1; i-- > 0;) {
    FieldReader reader(tail.substr(i));
    if (reader.U32() != kEndSignature) {
      continue;
    }
    (void)reader.Take(kEndSize - 6);
    const std::size_t comment = reader.U16();
    if (comment == reader.Left()) {
      place = i;
      return true;
    }
    if (!found && comment < reader.Left()) {
      place = i;
      found = true;
    }
  }
  return found;
}

/// Computes the table's offset from the record's fields and its own offset.
std::string PlaceTable(const ArchiveFile& file, const EndFields& fields, DirectoryEnd& end) {
  end.size = fields.size;
  end.count = fields.count;
  end.shortCount = fields.shortCount;
  // The table usually ends where the record begins, whatever precedes the archive.
  if (fields.size <= fields.place) {
    end.offset = fields.place - fields.size;
    if (end.offset >= fields.offset &&
        (fields.size == 0 || BeginsWith(file, end.offset, kDirectorySignature))) {
      end.shift = end.offset - fields.offset;
      return {};
    }
  }
  // Something may be between the two, a digital signature for instance: use the stated offset.
  if (fields.offset <= fields.place && fields.size <= fields.place - fields.offset &&
      BeginsWith(file, fields.offset, kDirectorySignature)) {
    end.offset = fields.offset;
    end.shift = 0;
    return {};
  }
  return "has no table of contents where it should be: the archive is damaged";
}

}  // namespace

std::string FindDirectoryEnd(const ArchiveFile& file, DirectoryEnd& end) {
  const std::size_t tailSize = std::min<std::uint64_t>(file.Length(), kEndSize + kLongestComment);
  if (tailSize < kEndSize) {
    return "is no zip archive, or is cut short";
  }
  std::vector<char> tail(tailSize);
  const std::uint64_t tailPlace = file.Length() - tailSize;
  if (const int code = file.ReadAt(tailPlace, tail.data(), tailSize); code != 0) {
    return Cause::System(code).Text();
  }
  const std::string_view bytes(tail.data(), tail.size());
  std::size_t place = 0;
  if (!FindRecord(bytes, place)) {
    return "is no zip archive, or is cut short";
  }
  EndFields fields = ReadEnd(bytes.substr(place));
  fields.place = tailPlace + place;
  PreferEnd64(file, fields);
  if (fields.severalDiscs) {
    return "is one piece of an archive of several";
  }
  return PlaceTable(file, fields, end);
}

}  // namespace zephin::expander
