#ifndef DIALOGS_PIXEL_RUNS_H_
#define DIALOGS_PIXEL_RUNS_H_

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/framework/exceptions.h"
#include "platform/framework/text.h"

/// The run-length layer of pixel strings: `X[n]` is n digits X. "12A[3]34" is "12AAA34".
namespace zephin::ViewConst {

/// The most digits that a string with runs may stand for.
inline constexpr std::int64_t kMostDigits = 50'000'000;

/// Calls `take(plain, digit, count)` for each stretch of plain digits with the run behind it;
/// behind the last stretch the count is 0. Raises OutOfMemoryException for a bracket without its
/// partner or without a digit in front, and for a single run that is over the limit by itself.
template <class Take>
void ForEachRun(std::string_view text, Take take) {
  std::size_t done = 0;
  for (;;) {
    const std::size_t open = text.find('[', done);
    if (open == std::string_view::npos) {
      break;
    }
    const std::size_t close = text.find(']', open);
    if (open == 0 || close == std::string_view::npos) {
      throw OutOfMemoryException();
    }
    const std::string number(text.substr(open + 1, close - open - 1));
    const std::int64_t count = std::max<std::int64_t>(ValInteger({number, Encoding::None}), 0);
    if (count > kMostDigits) {
      throw OutOfMemoryException();
    }
    // Right behind a run the character in front of the bracket is the last run's own bracket.
    const std::size_t plainEnd = std::max(open - 1, done);
    take(text.substr(done, plainEnd - done), text[open - 1], count);
    done = close + 1;
  }
  take(text.substr(done), '\0', 0);
}

/// Number of digits that the text stands for. Raises OutOfMemoryException if it has runs and the
/// number is over the limit.
inline std::int64_t ExpandedLength(std::string_view text) {
  if (text.find('[') == std::string_view::npos) {
    return std::ssize(text);
  }
  std::int64_t length = 0;
  ForEachRun(text, [&length](std::string_view plain, char /*digit*/, std::int64_t count) {
    length += std::ssize(plain) + count;
    if (length > kMostDigits) {
      throw OutOfMemoryException();
    }
  });
  return length;
}

}  // namespace zephin::ViewConst

#endif  // DIALOGS_PIXEL_RUNS_H_
