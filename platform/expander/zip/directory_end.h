// The end record of a zip archive, which says where the table of contents is.
#ifndef PLATFORM_EXPANDER_ZIP_DIRECTORY_END_H_
#define PLATFORM_EXPANDER_ZIP_DIRECTORY_END_H_

#include <cstdint>
#include <string>

#include "platform/expander/zip/archive_file.h"

namespace zephin::expander {

struct DirectoryEnd {
  /// Offset and length of the table in the file, in bytes; it ends within the file.
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
  /// The number of entries according to the record.
  std::uint64_t count = 0;
  /// The count has only 16 bits; some writers let it wrap around.
  bool shortCount = true;
  /// Bytes in front of the archive. Every offset in the archive is relative to their end.
  std::uint64_t shift = 0;
};

/// Finds the record, in its old or its 64-bit form. Returns an empty text, or why there is none;
/// then `end` is not valid.
[[nodiscard]] std::string FindDirectoryEnd(const ArchiveFile& file, DirectoryEnd& end);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_DIRECTORY_END_H_
