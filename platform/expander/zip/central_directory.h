// An archive's table of contents (the format's central directory). It alone says what the archive
// contains.
#ifndef PLATFORM_EXPANDER_ZIP_CENTRAL_DIRECTORY_H_
#define PLATFORM_EXPANDER_ZIP_CENTRAL_DIRECTORY_H_

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "platform/expander/common/faults.h"
#include "platform/expander/zip/archive_file.h"
#include "platform/expander/zip/entry.h"

namespace zephin::expander {

/// The first four bytes of each record.
constexpr std::uint32_t kDirectorySignature = 0x02014B50;

class CentralDirectory {
 public:
  CentralDirectory() = default;
  CentralDirectory(const CentralDirectory&) = delete;
  CentralDirectory& operator=(const CentralDirectory&) = delete;

  /// Reads and checks all entries. Those that can't be expanded have `refusal` set, also entries
  /// that share bytes of the archive. Faults of the archive as a whole (no table, a table that is
  /// cut short) are added to `faults` under `archiveName`; the entries that could be read are
  /// available anyway.
  void Read(const ArchiveFile& file, const std::string& archiveName, Faults& faults);

  /// In the archive's order.
  std::vector<Entry> entries;

  /// Length of the table in bytes.
  std::size_t Size() const { return bytes_.size(); }

 private:
  std::vector<char> bytes_;
  /// Names that had to be decoded or cleaned.
  std::deque<std::string> texts_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_CENTRAL_DIRECTORY_H_
