// The extra fields of a header: sizes of more than 32 bits, exact times, a name in UTF-8.
#ifndef PLATFORM_EXPANDER_ZIP_EXTRA_FIELDS_H_
#define PLATFORM_EXPANDER_ZIP_EXTRA_FIELDS_H_

#include <cstdint>
#include <optional>
#include <string_view>

namespace zephin::expander {

struct ExtraFields {
  /// Values of the 64-bit field, which holds only those whose place in the header has all bits set,
  /// in this order.
  std::optional<std::uint64_t> size;
  std::optional<std::uint64_t> packedSize;
  std::optional<std::uint64_t> offset;
  /// Time of the last change since 1970 (UTC).
  std::optional<std::int64_t> seconds;
  std::uint32_t nanoseconds = 0;
  /// The UTF-8 name that stands for the header's, if it was made for that very name.
  std::optional<std::string_view> unicodeName;
};

/// Which values of the header have all bits set, and so stand in the 64-bit field.
struct Wide {
  bool size = false;
  bool packedSize = false;
  bool offset = false;
};

/// Reads a header's extra bytes. What is cut short or unknown is passed over: of the fields taken
/// here only the 64-bit one decides about safety, and a value that it should give and doesn't stays
/// at 32 bits set, where no data fit. The result points into `extra`.
ExtraFields ReadExtraFields(std::string_view extra, std::string_view storedName, Wide wide);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_EXTRA_FIELDS_H_
