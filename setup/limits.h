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

}  // namespace zephin

#endif  // SETUP_LIMITS_H_
