#ifndef PAYLOAD_EXPANSION_TIME_H_
#define PAYLOAD_EXPANSION_TIME_H_

#include <cstdint>

namespace zephin {

/// How long an archive of `length` bytes is given to be expanded, in ticks of 1/60 second: half a
/// second for each 3,000,000 bytes begun, doubled on a slow system; half of that for a large
/// archive, a quarter for a very large one, which hold larger files.
constexpr std::int64_t ExpansionTicks(std::int64_t length, bool slow) {
  constexpr std::int64_t kStep = 3'000'000;
  constexpr std::int64_t kTicksPerStep = 30;
  constexpr std::int64_t kLarge = 30'000'000;
  constexpr std::int64_t kVeryLarge = 300'000'000;
  const std::int64_t duration = (length / kStep + 1) * kTicksPerStep * (slow ? 2 : 1);
  if (length > kVeryLarge) {
    return duration / 4;
  }
  return length > kLarge ? duration / 2 : duration;
}

}  // namespace zephin

#endif  // PAYLOAD_EXPANSION_TIME_H_
