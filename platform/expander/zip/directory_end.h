// The end record of a zip archive: where its central directory lies, which alone says what the
// archive holds.
#ifndef PLATFORM_EXPANDER_ZIP_DIRECTORY_END_H_
#define PLATFORM_EXPANDER_ZIP_DIRECTORY_END_H_

#include <cstdint>
#include <string>

#include "platform/expander/zip/archive_file.h"

namespace zephin::expander {

struct DirectoryEnd {
  /// Place of the central directory in the file, in bytes; both within the file's length.
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
  /// Entries that the record tells of.
  std::uint64_t count = 0;
  /// The record has room for 16 bits of the count only; some writers let it wrap around.
  bool shortCount = true;
  /// Bytes that stand before the archive: they are added to every place that it names.
  std::uint64_t shift = 0;
};

/// Finds the record, in its old and its 64-bit form. Gives an empty text, or why there is none.
[[nodiscard]] std::string FindDirectoryEnd(const ArchiveFile& file, DirectoryEnd& end);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_DIRECTORY_END_H_
