// Fields of an entry's header that are more than a number: dates and extra fields (sizes of more
// than 32 bits, exact times, names in UTF-8).
#ifndef PLATFORM_EXPANDER_ZIP_HEADER_FIELDS_H_
#define PLATFORM_EXPANDER_ZIP_HEADER_FIELDS_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zephin::expander {

struct ExtraFields {
  /// Values of the 64-bit field. It has only those whose 32-bit field in the header has all bits
  /// set, in this order.
  std::optional<std::uint64_t> size;
  std::optional<std::uint64_t> packedSize;
  std::optional<std::uint64_t> offset;
  /// Time of the last change since 1970 (UTC), in seconds and nanoseconds.
  std::optional<std::int64_t> seconds;
  std::uint32_t nanoseconds = 0;
  /// A UTF-8 name that replaces the header's name, if it was made for exactly that name.
  std::optional<std::string_view> unicodeName;
};

/// Which 32-bit fields of the header have all bits set, so that the 64-bit field has the value.
struct Wide {
  bool size = false;
  bool packedSize = false;
  bool offset = false;
};

/// Reads a header's extra bytes. Fields that are unknown or cut short are ignored. This is safe:
/// only the 64-bit field matters for safety, and a size or offset that it lacks keeps its 32 set
/// bits, which is outside of any archive that needs no such field. The result points into `extra`.
ExtraFields ReadExtraFields(std::string_view extra, std::string_view storedName, Wide wide);

/// Converts dates in the user's time zone.
class LocalTimes {
 public:
  /// Seconds since 1970 (UTC) for a header's date and time. Impossible dates (month 0, 31st of
  /// February) give a time close to them.
  ///   date: years since 1980 << 9 | month << 5 | day     2024-03-09: 44 << 9 | 3 << 5 | 9
  ///   time: hour << 11 | minute << 5 | seconds / 2       12:30:10:   12 << 11 | 30 << 5 | 5
  std::int64_t Seconds(std::uint16_t date, std::uint16_t time);

 private:
  /// The start of one hour of one day. The results are kept because the system reads its time zone
  /// file for every conversion, and the entries of an archive share few hours.
  struct Hour {
    std::uint32_t key = 0;
    std::int64_t seconds = 0;
  };
  std::array<Hour, 64> hours_{};
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_HEADER_FIELDS_H_
