#include "platform/expander/common/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace zephin::expander {
namespace {

std::uint8_t Byte(std::string_view text, std::size_t index) {
  return index < text.size() ? static_cast<std::uint8_t>(text[index]) : std::uint8_t{0};
}

/// Characters that may not reach a terminal: controls, separators of lines, and marks that change
/// the direction of text, so that a name seems to be another one.
bool IsDangerous(char32_t character) {
  using Range = std::pair<char32_t, char32_t>;
  constexpr std::array<Range, 6> kRanges = {Range{0, 0x1F},        Range{0x7F, 0x9F},
                                            Range{0x61C, 0x61C},   Range{0x200E, 0x200F},
                                            Range{0x2028, 0x202E}, Range{0x2066, 0x2069}};
  return std::any_of(kRanges.begin(), kRanges.end(), [&](const Range& range) {
    return character >= range.first && character <= range.second;
  });
}

/// The code of a valid character of UTF-8.
char32_t Code(std::string_view character) {
  // Of the first byte, the bits behind those that give the length.
  char32_t code =
      Byte(character, 0) & (character.size() == 1 ? 0x7FU : 0xFFU >> (character.size() + 1));
  for (std::size_t i = 1; i < character.size(); ++i) {
    code = code << 6U | (Byte(character, i) & 0x3FU);
  }
  return code;
}

}  // namespace

std::size_t Utf8Length(std::string_view text, std::size_t index) {
  const std::uint8_t lead = Byte(text, index);
  const auto follows = [&](std::size_t step, std::uint8_t low, std::uint8_t high) {
    const std::uint8_t next = Byte(text, index + step);
    return next >= low && next <= high;
  };
  if (lead < 0x80) {
    return 1;
  }
  if (lead >= 0xC2 && lead <= 0xDF) {
    return follows(1, 0x80, 0xBF) ? 2 : 0;
  }
  if (lead >= 0xE0 && lead <= 0xEF) {
    // Neither a longer form of a shorter character nor half of a pair of UTF-16.
    const std::uint8_t low = lead == 0xE0 ? 0xA0 : 0x80;
    const std::uint8_t high = lead == 0xED ? 0x9F : 0xBF;
    return follows(1, low, high) && follows(2, 0x80, 0xBF) ? 3 : 0;
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    // Nothing above U+10FFFF.
    const std::uint8_t low = lead == 0xF0 ? 0x90 : 0x80;
    const std::uint8_t high = lead == 0xF4 ? 0x8F : 0xBF;
    return follows(1, low, high) && follows(2, 0x80, 0xBF) && follows(3, 0x80, 0xBF) ? 4 : 0;
  }
  return 0;
}

std::string OneLine(std::string_view name) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  constexpr std::size_t kLongest = 1024;
  std::string line;
  // A character that is cut in two here is shown by its bytes.
  const std::string_view shown = name.substr(0, kLongest);
  for (std::size_t i = 0; i < shown.size();) {
    const std::size_t length = Utf8Length(shown, i);
    const std::string_view character = shown.substr(i, std::max<std::size_t>(length, 1));
    if (length > 0 && !IsDangerous(Code(character))) {
      line += character;
    } else {
      for (const char byte : character) {
        const auto code = static_cast<std::uint8_t>(byte);
        line += "\\x";
        line += kDigits[code >> 4U];
        line += kDigits[code & 0xFU];
      }
    }
    i += character.size();
  }
  return name.size() > kLongest ? line + "..." : line;
}

}  // namespace zephin::expander
