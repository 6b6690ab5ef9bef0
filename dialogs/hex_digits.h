#ifndef DIALOGS_HEX_DIGITS_H_
#define DIALOGS_HEX_DIGITS_H_

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

namespace zephin::ViewConst {

/// The value of a digit as the builder writes them: "0" to "9" and capitals. Nothing checks: any
/// other character has some value too.
constexpr unsigned HexValue(unsigned char digit) {
  if (digit >= '0' && digit <= '9') {
    return digit - 48U;
  }
  return digit >= 65 ? digit - 55U : digit;
}

/// The byte of every pair of characters, by the 16-bit word that the pair makes in memory. Pictures
/// have millions of pairs, and one look-up for each is several times faster than two digits.
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

/// The byte of the two digits at `pair`, the high one first, by a table of HexPairs.
inline std::uint8_t HexByte(const std::uint8_t* pairs, const char* pair) {
  std::uint16_t word = 0;
  std::memcpy(&word, pair, sizeof word);
  return pairs[word];
}

}  // namespace zephin::ViewConst

#endif  // DIALOGS_HEX_DIGITS_H_
