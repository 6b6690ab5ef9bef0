#ifndef SETUP_LIMITS_H_
#define SETUP_LIMITS_H_

#include <cstdint>

/// Numbers that a setup must keep to. Whoever makes a setup checks them; the installer fails at
/// them in its own way.
namespace zephin {

/// Rows of the choice dialog and of the option dialog: the most entries of either list.
inline constexpr int kSelectionRows = 10;

/// Length in bytes of the smallest archive that can be downloaded. A shorter response is taken for
/// a server's error page.
inline constexpr std::int64_t kSmallestDownload = 10'000;

/// The most hexadecimal digits that a pixel string may stand for, its runs written out.
inline constexpr std::int64_t kMostPixelDigits = 50'000'000;

/// The time for the expansion of an archive of `length` bytes, in ticks of 1/60 second: half a
/// second for each started 3,000,000 bytes, doubled on a slow system. A large archive gets half of
/// that, a very large one a quarter, since it holds fewer and larger files for its size.
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

#endif  // SETUP_LIMITS_H_
