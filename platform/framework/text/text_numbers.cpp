#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/framework/text.h"
#include "platform/framework/text/encodings.h"

namespace zephin {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string_view Digits(std::string_view text) {
  return text.substr(0, static_cast<std::size_t>(
                            std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin()));
}

/// A number without its sign: DIGITS[.[DIGITS]] or .DIGITS, then [e[+-]DIGITS].
/// "12.50e-3" has the digits "12", "50" and the exponent "-3".
struct Decimal {
  std::string_view all;
  std::string_view whole;
  std::string_view fraction;
  std::string_view exponent;
};

/// The number at the beginning of the text; all parts are empty if there is none.
Decimal ReadDecimal(std::string_view text) {
  Decimal number;
  number.whole = Digits(text);
  std::size_t end = number.whole.size();
  if (end < text.size() && text[end] == '.') {
    number.fraction = Digits(text.substr(end + 1));
    end += 1 + number.fraction.size();
  }
  if (number.whole.empty() && number.fraction.empty()) {
    return {};
  }
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    std::size_t digits = end + 1;
    if (digits < text.size() && (text[digits] == '+' || text[digits] == '-')) {
      ++digits;
    }
    const std::size_t count = Digits(text.substr(digits)).size();
    if (count > 0) {
      number.exponent = text.substr(end + 1, digits + count - (end + 1));
      end = digits + count;
    }
  }
  number.all = text.substr(0, end);
  return number;
}

/// The exponent, limited to bounds that no number of digits in memory can reach.
std::int64_t Exponent(const Decimal& number) {
  constexpr std::int64_t kBound = std::int64_t{1} << 62U;
  std::string_view digits = number.exponent;
  if (!digits.empty() && digits.front() == '+') {
    digits.remove_prefix(1);
  }
  std::int64_t exponent = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
  if (result.ec == std::errc::result_out_of_range) {
    return digits.front() == '-' ? -kBound : kBound;
  }
  return std::clamp(exponent, -kBound, kBound);
}

/// For a number outside of the range of a double: whether it is too large, not too small.
bool IsLarge(const Decimal& number) {
  const std::size_t zeros = number.whole.find_first_not_of('0');
  const auto places = zeros != std::string_view::npos
                          ? static_cast<std::int64_t>(number.whole.size() - zeros)
                          : -static_cast<std::int64_t>(std::min(
                                number.fraction.find_first_not_of('0'), number.fraction.size()));
  return places + Exponent(number) > 0;
}

double Magnitude(std::string_view text) {
  const Decimal number = ReadDecimal(text);
  double value = 0;
  const char* const end = number.all.data() + number.all.size();
  const auto result = std::from_chars(number.all.data(), end, value);
  if (result.ec == std::errc::result_out_of_range) {
    return IsLarge(number) ? std::numeric_limits<double>::max() : 0;
  }
  return value;
}

/// The ASCII characters at the beginning of the text: no other can be part of a number.
std::string NarrowStart(const String& text) {
  std::string start;
  for (std::size_t offset = 0; offset < text.Size();) {
    const Character character = DecodeCharacter(text.View(), offset, text.DeclaredEncoding());
    if (character.code >= 0x80) {
      break;
    }
    start += static_cast<char>(character.code);
    offset += character.size;
  }
  return start;
}

double ReadNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  if (text.empty()) {
    return 0;
  }
  const bool isNegative = text.front() == '-';
  if (isNegative || text.front() == '+') {
    text.remove_prefix(1);
  }
  const double magnitude = Magnitude(text);
  return isNegative ? -magnitude : magnitude;
}

}  // namespace

double Val(const String& text) {
  return text.DeclaredEncoding() == Encoding::UTF16 ? ReadNumber(NarrowStart(text))
                                                    : ReadNumber(text.View());
}

std::int64_t ValInteger(const String& text) {
  using Limits = std::numeric_limits<std::int64_t>;
  // The first number above the range. A double represents it exactly, unlike the largest number of
  // the range.
  constexpr double kAbove = 9223372036854775808.0;
  const double value = Val(text);
  if (value >= kAbove) {
    return Limits::max();
  }
  return value <= -kAbove ? Limits::min() : static_cast<std::int64_t>(value);
}

String Str(std::int64_t number) {
  return Utf8(std::to_string(number));
}

}  // namespace zephin
