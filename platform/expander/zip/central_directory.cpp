#include "platform/expander/zip/central_directory.h"

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <numeric>
#include <string_view>
#include <vector>

#include "platform/expander/zip/directory_end.h"
#include "platform/expander/zip/entry_name.h"
#include "platform/expander/zip/header_fields.h"
#include "platform/expander/zip/little_endian.h"
#include "platform/expander/zip/local_header.h"

namespace zephin::expander {
namespace {

constexpr std::size_t kRecordSize = 46;
constexpr std::uint32_t kAllBits = 0xFFFFFFFF;
/// Room for over a million entries with names of 80 bytes. A larger table only serves to exhaust
/// memory.
constexpr std::uint64_t kLargestTable = 128ULL << 20U;

/// The fields of a record that become kind, attributes and name of the entry.
struct Record {
  std::uint16_t host = 0;
  std::uint16_t time = 0;
  std::uint16_t date = 0;
  std::uint32_t external = 0;
  std::string_view extra;
};

/// The first reason counts.
void Refuse(Entry& entry, const char* refusal) {
  entry.refusal = entry.refusal != nullptr ? entry.refusal : refusal;
}

/// Length in bytes of the entry's local header without extra fields.
std::uint64_t LeastHeader(const Entry& entry) {
  return kLocalHeaderSize + entry.storedName.size();
}

/// A record of the table: signature 4, made by 2 (version, host), needed 2, flags 2, method 2, time
/// 2, date 2, CRC 4, packed size 4, size 4, lengths of name, extra and comment 2 each, disc 2,
/// internal 2, external 4, offset 4, name, extra, comment
bool TakeRecord(FieldReader& reader, Entry& entry, Record& record) {
  if (reader.U32() != kDirectorySignature) {
    return false;
  }
  record.host = reader.U16() >> 8U;
  (void)reader.U16();
  entry.flags = reader.U16();
  entry.method = reader.U16();
  record.time = reader.U16();
  record.date = reader.U16();
  entry.crc = reader.U32();
  entry.packedSize = reader.U32();
  entry.size = reader.U32();
  const std::size_t nameLength = reader.U16();
  const std::size_t extraLength = reader.U16();
  const std::size_t commentLength = reader.U16();
  (void)reader.U32();
  record.external = reader.U32();
  entry.offset = reader.U32();
  entry.storedName = reader.Take(nameLength);
  record.extra = reader.Take(extraLength);
  (void)reader.Take(commentLength);
  return reader.Ok();
}

/// FAT, NTFS and VFAT.
bool IsWindows(const Record& record) {
  return record.host == 0 || record.host == 10 || record.host == 14;
}

/// Unix and the Mac store a Unix mode in the upper half of the external attributes.
bool HasUnixMode(const Record& record) {
  return (record.host == 3 || record.host == 19) && record.external >> 16U != 0;
}

const char* SetKind(Entry& entry, const Record& record, bool namedAsFolder) {
  constexpr std::uint32_t kDosReadOnly = 0x01;
  constexpr std::uint32_t kDosFolder = 0x10;
  std::uint32_t type = 0;
  if (HasUnixMode(record)) {
    const std::uint32_t mode = record.external >> 16U;
    type = mode & S_IFMT;
    entry.attributes.mode = static_cast<std::uint16_t>(mode & 0777U);
    entry.attributes.hasMode = true;
  } else if ((record.external & kDosFolder) != 0 && entry.size == 0) {
    type = S_IFDIR;
  } else if ((record.external & kDosReadOnly) != 0 && !namedAsFolder) {
    entry.attributes.mode = S_IRUSR | S_IRGRP | S_IROTH;
    entry.attributes.hasMode = true;
  }
  if (type != 0 && type != S_IFREG && type != S_IFDIR && type != S_IFLNK) {
    return "is a device, a socket or a pipe";
  }
  if (type == S_IFDIR || namedAsFolder) {
    entry.kind = EntryKind::Folder;
    return type == S_IFLNK ? "is a link with the name of a folder" : nullptr;
  }
  entry.kind = type == S_IFLNK ? EntryKind::Link : EntryKind::File;
  if (entry.kind == EntryKind::Link && (entry.size == 0 || entry.size >= PATH_MAX)) {
    return "is a link whose target is empty or longer than a path can be";
  }
  return nullptr;
}

const char* CheckData(const Entry& entry) {
  // Some tools write data for a folder; nobody reads them.
  if (entry.kind == EntryKind::Folder) {
    return nullptr;
  }
  // One byte of packed data unpacks to at most this many. Of zstd a block of 128 KB that repeats
  // one byte takes four.
  constexpr std::uint64_t kLargestDeflateRatio = 1032;
  constexpr std::uint64_t kLargestZstdRatio = (128U << 10U) / 4;
  if ((entry.flags & kEncryptionFlags) != 0) {
    return "is encrypted";
  }
  if (!IsKnownMethod(entry.method)) {
    return "is packed by a method that is not known here";
  }
  const std::uint64_t ratio =
      entry.method == kMethodZstd ? kLargestZstdRatio : kLargestDeflateRatio;
  const bool possible = entry.method == kMethodStored ? entry.size == entry.packedSize
                                                      : entry.size / ratio <= entry.packedSize;
  return possible ? nullptr : "states a size that its data can't have";
}

/// Some tools of Windows separate folders by backslashes, against the format's rules. That is
/// assumed if no name has a slash and all names have a backslash; in an archive made on Windows,
/// where no name can have a backslash in it, one is enough.
Separator FindSeparator(FieldReader reader) {
  bool all = true;
  bool any = false;
  bool windows = true;
  Entry entry;
  Record record;
  while (reader.Left() >= kRecordSize && TakeRecord(reader, entry, record)) {
    if (entry.storedName.find('/') != std::string_view::npos) {
      return Separator::Slash;
    }
    const bool has = entry.storedName.find('\\') != std::string_view::npos;
    all = all && has;
    any = any || has;
    windows = windows && IsWindows(record);
  }
  return any && (all || windows) ? Separator::Backslash : Separator::Slash;
}

/// The least part of the file that belongs to an entry. Its local header may have extra fields,
/// which are not read here.
struct Span {
  Entry* entry = nullptr;
  std::uint64_t end = 0;
};

class EntryReader {
 public:
  EntryReader(const DirectoryEnd& end, Separator separator, std::deque<std::string>& texts)
      : shift_(end.shift), tableOffset_(end.offset), separator_(separator), texts_(texts) {}

  bool Next(FieldReader& reader, Entry& entry) {
    Record record;
    if (!TakeRecord(reader, entry, record)) {
      return false;
    }
    const ExtraFields extra = ReadExtraFields(
        record.extra, entry.storedName,
        {entry.size == kAllBits, entry.packedSize == kAllBits, entry.offset == kAllBits});
    entry.size = extra.size.value_or(entry.size);
    entry.packedSize = extra.packedSize.value_or(entry.packedSize);
    entry.offset = extra.offset.value_or(entry.offset);
    entry.attributes.seconds =
        extra.seconds ? *extra.seconds : times_.Seconds(record.date, record.time);
    entry.attributes.nanoseconds = extra.nanoseconds;
    const CleanName name = CleanEntryName(
        {entry.storedName, (entry.flags & kFlagUtf8) != 0, extra.unicodeName, separator_}, texts_);
    entry.path = name.path;
    Refuse(entry, name.refusal);
    Refuse(entry, SetKind(entry, record, name.folder));
    Refuse(entry, CheckData(entry));
    Refuse(entry, Place(entry));
    return true;
  }

 private:
  // Adds the length of what precedes the archive, and checks that the entry fits in front of the
  // table.
  const char* Place(Entry& entry) const {
    const std::uint64_t least = LeastHeader(entry);
    if (entry.offset > tableOffset_ || shift_ > tableOffset_ - entry.offset ||
        least > tableOffset_ - entry.offset - shift_ ||
        entry.packedSize > tableOffset_ - entry.offset - shift_ - least) {
      return "lies outside of the archive";
    }
    entry.offset += shift_;
    entry.end = tableOffset_;
    return nullptr;
  }

  std::uint64_t shift_;
  std::uint64_t tableOffset_;
  Separator separator_;
  std::deque<std::string>& texts_;
  LocalTimes times_;
};

/// The entries that are inside of the archive, in the order of their data.
std::vector<Span> Spans(std::vector<Entry>& entries) {
  std::vector<Span> spans;
  spans.reserve(entries.size());
  for (Entry& entry : entries) {
    if (entry.end != 0) {
      spans.push_back({&entry, entry.offset + LeastHeader(entry) + entry.packedSize});
    }
  }
  const auto before = [](const Span& a, const Span& b) {
    return a.entry->offset < b.entry->offset;
  };
  if (!std::is_sorted(spans.begin(), spans.end(), before)) {
    std::sort(spans.begin(), spans.end(), before);
  }
  return spans;
}

/// Refuses entries that share bytes, and ends each entry where the next one begins. With shared
/// bytes an archive of a few kilobytes could fill a disk.
void RefuseOverlaps(std::vector<Entry>& entries, std::uint64_t tableOffset) {
  const std::vector<Span> spans = Spans(entries);
  Span farthest;
  for (const Span& span : spans) {
    if (span.entry->offset < farthest.end) {
      Refuse(*span.entry, kSharesBytes);
      Refuse(*farthest.entry, kSharesBytes);
    }
    if (span.end > farthest.end) {
      farthest = span;
    }
  }
  std::uint64_t next = tableOffset;
  for (std::size_t i = spans.size(); i-- > 0;) {
    spans[i].entry->end = next;
    next = spans[i].entry->offset;
  }
}

}  // namespace

void CentralDirectory::Read(const ArchiveFile& file, const std::string& archiveName,
                            Faults& faults) {
  DirectoryEnd end;
  if (const std::string why = FindDirectoryEnd(file, end); !why.empty()) {
    faults.Add(Faults::kWholeArchive, archiveName, why, Reason::NoArchive);
    return;
  }
  if (end.size > kLargestTable) {
    faults.Add(Faults::kWholeArchive, archiveName, "has a table of contents too large to be real",
               Reason::NoArchive);
    return;
  }
  bytes_.resize(end.size);
  if (const int code = file.ReadAt(end.offset, bytes_.data(), bytes_.size()); code != 0) {
    faults.Add(Faults::kWholeArchive, archiveName, Cause::System(code));
    return;
  }
  FieldReader reader(std::string_view(bytes_.data(), bytes_.size()));
  EntryReader entryReader(end, FindSeparator(reader), texts_);
  entries.reserve(std::min<std::uint64_t>(end.count, end.size / kRecordSize));
  while (reader.Left() >= kRecordSize) {
    Entry entry;
    if (!entryReader.Next(reader, entry)) {
      break;
    }
    entry.order = static_cast<std::uint32_t>(entries.size() + 1);
    entries.push_back(entry);
  }
  const std::uint64_t mask = end.shortCount ? 0xFFFFU : ~0ULL;
  if ((entries.size() & mask) != (end.count & mask)) {
    faults.Add(Faults::kWholeArchive, archiveName,
               "its table of contents breaks off after " + std::to_string(entries.size()) + " of " +
                   std::to_string(end.count) + " entries",
               Reason::NoArchive);
  }
  RefuseOverlaps(entries, end.offset);
}

}  // namespace zephin::expander
