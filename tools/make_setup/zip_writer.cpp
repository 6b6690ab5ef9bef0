#include "tools/make_setup/zip_writer.h"

#include <algorithm>
#include <chrono>

#include "setup/bundle_files.h"

namespace zephin::make_setup {
namespace {

constexpr std::uint32_t kLocalHeader = 0x04034b50;
constexpr std::uint32_t kDirectoryHeader = 0x02014b50;
constexpr std::uint32_t kDirectoryEnd = 0x06054b50;
constexpr std::uint32_t kDirectoryEnd64 = 0x06064b50;
constexpr std::uint32_t kDirectoryEnd64Locator = 0x07064b50;
constexpr std::uint16_t kNamesAreUtf8 = 0x0800;
constexpr std::uint16_t kVersion = 20;
constexpr std::uint16_t kVersion64 = 45;
constexpr std::uint16_t kVersionZstd = 63;
constexpr std::uint16_t kMadeOnUnix = 3 << 8;
constexpr std::uint16_t kTimeField = 0x5455;
constexpr std::uint16_t kSizesField = 1;
/// In a field of 32 or 16 bits: the number is in the field of 64 bits.
constexpr std::uint64_t kElsewhere = 0xFFFFFFFF;
constexpr std::uint64_t kElsewhere16 = 0xFFFF;
/// Larger contents get fields of 64 bits. The data may be longer than the content, by less than
/// this leaves room for.
constexpr std::uint64_t kLargest32 = 0xFF000000;

/// Appends a number of `bytes` bytes, the low one first.
void Put(std::string& text, std::uint64_t number, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    text += static_cast<char>(number >> (8 * i));
  }
}

void Put16(std::string& text, std::uint64_t number) {
  Put(text, number, 2);
}

void Put32(std::string& text, std::uint64_t number) {
  Put(text, number, 4);
}

bool IsLarge(const ZipEntry& entry) {
  return entry.size > kLargest32;
}

/// The version of the format that a reader must know.
std::uint16_t VersionFor(const ZipEntry& entry, bool fields64) {
  return entry.method == ZipMethod::Zstd ? kVersionZstd : fields64 ? kVersion64 : kVersion;
}

/// Time and date as the format has them: in steps of two seconds, from 1980 to 2107. They are UTC,
/// so that an archive is the same wherever it is made; programs prefer the field of 1970.
void PutTime(std::string& text, std::int64_t seconds) {
  using namespace std::chrono;
  const sys_seconds time{std::clamp(std::chrono::seconds(seconds),
                                    sys_days(1980y / 1 / 1).time_since_epoch() + 0s,
                                    sys_days(2107y / 12 / 31).time_since_epoch() + 0s)};
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(time - day);
  Put16(text,
        static_cast<std::uint64_t>(clock.hours().count() << 11 | clock.minutes().count() << 5 |
                                   clock.seconds().count() / 2));
  Put16(text, static_cast<std::uint64_t>(int{date.year()} - 1980) << 9 |
                  unsigned{date.month()} << 5 | unsigned{date.day()});
}

/// The part that both headers have in common, from the flags to the sizes.
void PutDescription(std::string& text, const ZipEntry& entry, std::uint64_t packedSize) {
  // Without this flag readers take names for those of an old system's code page.
  Put16(text, kNamesAreUtf8);
  Put16(text, static_cast<std::uint16_t>(entry.method));
  PutTime(text, entry.time);
  Put32(text, entry.crc);
  Put32(text, IsLarge(entry) ? kElsewhere : packedSize);
  Put32(text, IsLarge(entry) ? kElsewhere : entry.size);
  Put16(text, entry.name.size());
}

std::string TimeField(const ZipEntry& entry) {
  constexpr std::uint64_t kModified = 1;
  std::string field;
  Put16(field, kTimeField);
  Put16(field, 5);
  Put(field, kModified, 1);
  Put32(field, static_cast<std::uint64_t>(entry.time));
  return field;
}

std::string SizesField(const std::vector<std::uint64_t>& numbers) {
  std::string field;
  if (!numbers.empty()) {
    Put16(field, kSizesField);
    Put16(field, 8 * numbers.size());
    for (const std::uint64_t number : numbers) {
      Put(field, number, 8);
    }
  }
  return field;
}

}  // namespace

ZipWriter::ZipWriter(const std::filesystem::path& path, ZipForm form) : file_(path), form_(form) {}

void ZipWriter::Begin(const ZipEntry& entry) {
  items_.push_back({entry, 0, length_});
  // End writes it again, with what is known then.
  Append(LocalHeader(items_.back()));
  // The header has its final length: sizes of 64 bits depend on the content's size alone.
  dataStart_ = length_;
}

void ZipWriter::Write(std::string data) {
  Append(std::move(data));
}

void ZipWriter::End(ZipMethod method, std::uint32_t crc) {
  Written& item = items_.back();
  item.packedSize = length_ - dataStart_;
  item.entry.method = method;
  item.entry.crc = crc;
  // Scrambling depends on the place in the file, so the header can be replaced alone.
  std::string header = LocalHeader(item);
  if (form_ == ZipForm::Scrambled) {
    ScrambleBytes(header, item.position);
  }
  file_.Overwrite(item.position, header);
}

void ZipWriter::Close() {
  AppendDirectory();
  file_.Close();
}

void ZipWriter::Append(std::string bytes) {
  if (form_ == ZipForm::Scrambled) {
    ScrambleBytes(bytes, length_);
  }
  file_.Write(bytes);
  length_ += bytes.size();
}

std::string ZipWriter::LocalHeader(const Written& item) {
  const ZipEntry& entry = item.entry;
  std::vector<std::uint64_t> large;
  if (IsLarge(entry)) {
    large = {entry.size, item.packedSize};
  }
  const std::string extra = SizesField(large) + TimeField(entry);
  std::string header;
  Put32(header, kLocalHeader);
  Put16(header, VersionFor(entry, IsLarge(entry)));
  PutDescription(header, entry, item.packedSize);
  Put16(header, extra.size());
  return header + entry.name + extra;
}

std::string ZipWriter::DirectoryHeader(const Written& item) {
  const ZipEntry& entry = item.entry;
  std::vector<std::uint64_t> large;
  if (IsLarge(entry)) {
    large = {entry.size, item.packedSize};
  }
  const bool isFar = item.position >= kElsewhere;
  // The order in this field is fixed: sizes, then the position, each only where it is needed.
  if (isFar) {
    large.push_back(item.position);
  }
  const std::uint16_t version = VersionFor(entry, !large.empty());
  const std::string extra = SizesField(large) + TimeField(entry);
  std::string header;
  Put32(header, kDirectoryHeader);
  // Readers take the mode below only from an archive made on Unix.
  Put16(header, kMadeOnUnix | version);
  Put16(header, version);
  PutDescription(header, entry, item.packedSize);
  Put16(header, extra.size());
  Put16(header, 0);                                // Length of the comment.
  Put16(header, 0);                                // Number of the disk.
  Put16(header, 0);                                // Internal attributes.
  Put32(header, std::uint64_t{entry.mode} << 16);  // The lower half is for other systems.
  Put32(header, isFar ? kElsewhere : item.position);
  return header + entry.name + extra;
}

void ZipWriter::AppendDirectory() {
  const std::uint64_t start = length_;
  for (const Written& item : items_) {
    Append(DirectoryHeader(item));
  }
  const std::uint64_t size = length_ - start;
  const std::uint64_t count = items_.size();
  std::string end;
  // A number that only looks like "elsewhere" is written there, too.
  if (count >= kElsewhere16 || size >= kElsewhere || start >= kElsewhere) {
    constexpr std::uint64_t kLengthBehindThis = 44;
    const std::uint64_t position = length_;
    Put32(end, kDirectoryEnd64);
    Put(end, kLengthBehindThis, 8);
    Put16(end, kMadeOnUnix | kVersion64);
    Put16(end, kVersion64);
    Put(end, 0, 8);  // Numbers of two disks.
    for (const std::uint64_t number : {count, count, size, start}) {
      Put(end, number, 8);
    }
    Put32(end, kDirectoryEnd64Locator);
    Put32(end, 0);  // Number of the disk.
    Put(end, position, 8);
    Put32(end, 1);  // Number of disks.
  }
  Put32(end, kDirectoryEnd);
  Put32(end, 0);  // Numbers of two disks.
  Put16(end, std::min(count, kElsewhere16));
  Put16(end, std::min(count, kElsewhere16));
  Put32(end, std::min(size, kElsewhere));
  Put32(end, std::min(start, kElsewhere));
  Put16(end, 0);  // Length of the comment.
  Append(end);
}

}  // namespace zephin::make_setup
