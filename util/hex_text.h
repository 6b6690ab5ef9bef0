#ifndef UTIL_HEX_TEXT_H_
#define UTIL_HEX_TEXT_H_

#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "platform/framework/string.h"

/// Bytes and texts that travel in the setup record as hexadecimal digits: two capitals or figures
/// for each byte, the high digit first.
namespace zephin::ViewConst {

/// The value of a digit: "0" to "9" or a capital. No digit is checked; any other character has some
/// value, too.
constexpr unsigned HexValue(unsigned char digit) {
  if (digit >= '0' && digit <= '9') {
    return digit - 48U;
  }
  return digit >= 65 ? digit - 55U : digit;
}

/// The byte of every pair of characters, by the 16-bit word that the pair is in memory. Pictures
/// have millions of pairs, and one look-up for each is several times as fast as two digits.
inline const std::vector<std::uint8_t>& HexPairs() {
  static const std::vector<std::uint8_t> pairs = [] {
    std::vector<std::uint8_t> table(1U << 16U);
    for (unsigned high = 0; high < 256; ++high) {
      for (unsigned low = 0; low < 256; ++low) {
        const std::array<unsigned char, 2> pair{static_cast<unsigned char>(high),
                                                static_cast<unsigned char>(low)};
        std::uint16_t word = 0;
        std::memcpy(&word, pair.data(), sizeof word);
        table[word] = static_cast<std::uint8_t>(16 * HexValue(pair[0]) + HexValue(pair[1]));
      }
    }
    return table;
  }();
  return pairs;
}

/// The byte of the two digits at `pair`, the high one first. `pairs` is the data of HexPairs.
inline std::uint8_t HexByte(const std::uint8_t* pairs, const char* pair) {
  std::uint16_t word = 0;
  std::memcpy(&word, pair, sizeof word);
  return pairs[word];
}

/// Decodes `count` bytes from 2 * `count` digits; both blocks must be that long. No digit is
/// checked: a small letter gives a value above 15, of which the byte keeps the low eight bits.
void MemoryBlockHexToByte(std::span<const char> hexBlock, std::span<char> byteBlock,
                          std::int64_t count);

/// Would swap the bytes of each 16-bit unit on a big-endian processor. Does nothing on the others.
void MemoryBlockByteSwitchPPC(std::span<char> block, std::int64_t count);

/// The UTF-8 form of a text stored as UTF-16 in digits, low byte first. An odd last digit is
/// dropped. With `flag` false the text itself.
String UnicodeFromHex(const String& text, bool flag);

}  // namespace zephin::ViewConst

#endif  // UTIL_HEX_TEXT_H_
