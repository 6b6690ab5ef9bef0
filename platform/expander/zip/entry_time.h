// Times of entries that have no exact one: a day and a time of day in the user's time zone.
#ifndef PLATFORM_EXPANDER_ZIP_ENTRY_TIME_H_
#define PLATFORM_EXPANDER_ZIP_ENTRY_TIME_H_

#include <array>
#include <cstdint>

namespace zephin::expander {

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

#endif  // PLATFORM_EXPANDER_ZIP_ENTRY_TIME_H_
