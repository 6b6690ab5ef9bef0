// The header in front of an entry's data. The table of contents alone decides what is made; this
// header must agree with it, and says how many bytes of its own come before the data.
//
// Compared are signature, method, CRC, both sizes, the bytes of the name, and the flags of
// encryption. Ignored are:
// - the version needed and the other flags: some writers set that of UTF-8 in one place only;
// - date, time and all extra fields but the 64-bit sizes: writers round times differently here, and
//   no time or name is ever taken from this header, so a wrong one has no effect;
// - the data descriptor behind the data: its length is ambiguous, and its CRC and sizes are in the
//   table too, which the data themselves are checked against.
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

/// Checks the header of an entry (see above) and finds the first byte of its data in the file. On
/// success all of the data are in front of entry.end; else `offset` is not set and the cause is
/// returned.
[[nodiscard]] Cause FindData(const Entry& entry, WindowReader& reader, std::uint64_t& offset);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_LOCAL_HEADER_H_
