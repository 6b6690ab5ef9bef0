// Fields of an entry's header that need more than reading a number: dates and extra fields.
#ifndef PLATFORM_EXPANDER_ZIP_HEADER_FIELDS_H_
#define PLATFORM_EXPANDER_ZIP_HEADER_FIELDS_H_

#include <array>
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

class LocalTimes {
 public:
  /// Seconds since 1970 (UTC) for a header's date and time. Dates that there aren't (month 0, 31st
  /// of February) give a time near them.
  ///   date: years since 1980 << 9 | month << 5 | day     2024-03-09: 44 << 9 | 3 << 5 | 9
  ///   time: hour << 11 | minute << 5 | seconds / 2       12:30:10:   12 << 11 | 30 << 5 | 5
  std::int64_t Seconds(std::uint16_t date, std::uint16_t time);

 private:
  /// What the time zone says about one hour of one day; the system looks at its settings' file for
  /// every question, and the entries of an archive share few hours.
  struct Hour {
    std::uint32_t key = 0;
    std::int64_t seconds = 0;
  };
  std::array<Hour, 64> hours_{};
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_HEADER_FIELDS_H_
