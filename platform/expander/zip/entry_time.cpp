#include "platform/expander/zip/entry_time.h"

#include <algorithm>
#include <ctime>

namespace zephin::expander {

std::int64_t LocalTimes::Seconds(std::uint16_t date, std::uint16_t time) {
  const std::uint32_t hour = time >> 11U;
  // Never 0, so that an unused place doesn't match.
  const std::uint32_t key = (static_cast<std::uint32_t>(date) << 5U | hour) + 1;
  Hour& known = hours_.at(key % hours_.size());
  if (known.key != key) {
    std::tm fields{};
    fields.tm_year = static_cast<int>(date >> 9U) + 80;
    fields.tm_mon = std::max(static_cast<int>(date >> 5U & 0xFU) - 1, 0);
    fields.tm_mday = std::max(static_cast<int>(date & 0x1FU), 1);
    fields.tm_hour = static_cast<int>(hour);
    fields.tm_isdst = -1;
    known = Hour{key, std::mktime(&fields)};
  }
  const std::uint32_t within = (time >> 5U & 0x3FU) * 60U + (time & 0x1FU) * 2U;
  return known.seconds + static_cast<std::int64_t>(within);
}

}  // namespace zephin::expander
