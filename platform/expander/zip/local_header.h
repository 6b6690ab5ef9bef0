// The header in front of an entry's data. The table of contents alone decides what is made; this
// header must agree with it, and says how many bytes of its own come before the data.
#ifndef PLATFORM_EXPANDER_ZIP_LOCAL_HEADER_H_
#define PLATFORM_EXPANDER_ZIP_LOCAL_HEADER_H_

#include <cstddef>
#include <cstdint>

#include "platform/expander/common/faults.h"
#include "platform/expander/zip/archive_file.h"
#include "platform/expander/zip/entry.h"

namespace zephin::expander {

/// Length in bytes of the part in front of name and extra fields.
constexpr std::size_t kLocalHeaderSize = 30;

/// Checks the header of an entry and finds the first byte of its data in the file. On success all
/// of the data are in front of entry.end; else `offset` is not set and the cause is returned.
[[nodiscard]] Cause FindData(const Entry& entry, WindowReader& reader, std::uint64_t& offset);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_LOCAL_HEADER_H_
