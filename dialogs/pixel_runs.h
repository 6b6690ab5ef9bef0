#ifndef DIALOGS_PIXEL_RUNS_H_
#define DIALOGS_PIXEL_RUNS_H_

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/framework/exceptions.h"
#include "platform/framework/text.h"
#include "setup/limits.h"

/// The run-length layer of pixel strings: `X[n]` is n digits X. "12A[3]34" is "12AAA34".
namespace zephin::ViewConst {

/// A run's count and the position of its "]".
struct RunEnd {
  std::int64_t count = 0;
  std::size_t close = std::string_view::npos;  ///< npos if there is none.
};

/// Reads the count behind the "[" at `open`. Nearly all counts are a few plain digits; only the
/// others are searched for spaces, signs and fractions.
inline RunEnd ReadCount(std::string_view text, std::size_t open) {
  constexpr std::size_t kMostPlainDigits = 18;
  RunEnd end{0, open + 1};
  for (; end.close < text.size() && end.close - open <= kMostPlainDigits; ++end.close) {
    const char c = text[end.close];
    if (c < '0' || c > '9') {
      break;
    }
    end.count = end.count * 10 + (c - '0');
  }
  if (end.close < text.size() && text[end.close] == ']') {
    return end;
  }
  end.close = text.find(']', open);
  if (end.close != std::string_view::npos) {
    const std::string_view number = text.substr(open + 1, end.close - open - 1);
    end.count = std::max<std::int64_t>(ValInteger({std::string(number), Encoding::None}), 0);
  }
  return end;
}

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
    const RunEnd end = ReadCount(text, open);
    if (open == 0 || end.close == std::string_view::npos || end.count > kMostPixelDigits) {
      throw OutOfMemoryException();
    }
    // Right behind a run the character in front of the bracket is the last run's own bracket.
    const std::size_t plainEnd = std::max(open - 1, done);
    take(text.substr(done, plainEnd - done), text[open - 1], end.count);
    done = end.close + 1;
  }
  take(text.substr(done), '\0', 0);
}

/// Number of digits of the text with its runs written out. Raises OutOfMemoryException if it has
/// runs and the number is over the limit.
inline std::int64_t ExpandedLength(std::string_view text) {
  if (text.find('[') == std::string_view::npos) {
    return std::ssize(text);
  }
  std::int64_t length = 0;
  ForEachRun(text, [&length](std::string_view plain, char /*digit*/, std::int64_t count) {
    length += std::ssize(plain) + count;
    if (length > kMostPixelDigits) {
      throw OutOfMemoryException();
    }
  });
  return length;
}

}  // namespace zephin::ViewConst

#endif  // DIALOGS_PIXEL_RUNS_H_
