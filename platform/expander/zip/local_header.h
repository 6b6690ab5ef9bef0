// The header in front of an entry's data. It decides nothing: it has to agree with the central
// directory, and tells how far behind it the data begin.
#ifndef PLATFORM_EXPANDER_ZIP_LOCAL_HEADER_H_
#define PLATFORM_EXPANDER_ZIP_LOCAL_HEADER_H_

#include <cstddef>
#include <cstdint>

#include "platform/expander/zip/archive_file.h"
#include "platform/expander/zip/entry.h"

namespace zephin::expander {

constexpr std::size_t kLocalHeaderSize = 30;

struct DataPlace {
  /// First byte of the entry's data in the file.
  std::uint64_t offset = 0;
  /// Why the entry can't be trusted or read, a fixed text; nil if it can.
  const char* refusal = nullptr;
  /// The system's error code when reading failed, else 0.
  int code = 0;
};

/// Checks the header of an entry. All of the data lie before the entry's limit if there is no
/// refusal.
DataPlace FindData(const Entry& entry, WindowReader& reader);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_LOCAL_HEADER_H_
