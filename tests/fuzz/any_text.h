#ifndef TESTS_FUZZ_ANY_TEXT_H_
#define TESTS_FUZZ_ANY_TEXT_H_

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/framework/text.h"

namespace zephin::test {

inline constexpr std::string_view kNul("\0", 1);
/// Longer than one step of a block-wise search.
inline constexpr std::string_view kFiller =
    "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx";
/// Characters, parts of characters and variants of one letter.
inline constexpr std::array<std::string_view, 22> kPieces = {
    "a",          "A",        "\u00E9", "\u00C9", "k",  "\u212A",   "K",    "\u017F",
    "s",          "S",        "\u00FF", "\u0178", "|",  "\xE2\x84", "\xAA", "\U00010400",
    "\U00010428", "\xF0\x90", "\xFF",   "\u6F22", kNul, kFiller};

/// A text in any encoding, of any bytes or of a few kinds of pieces. In the latter case large bytes
/// repeat an earlier part, since searches are most likely to fail in texts that repeat.
inline String AnyText(FuzzedDataProvider& data, std::size_t most) {
  constexpr std::size_t kStretch = 16;
  const auto encoding = static_cast<Encoding>(data.ConsumeIntegralInRange(0, 3));
  const auto kinds = data.ConsumeIntegralInRange<std::size_t>(0, 6);
  const auto first = data.ConsumeIntegralInRange<std::size_t>(0, kPieces.size() - 1);
  const std::string bytes = data.ConsumeRandomLengthString(most);
  if (kinds == 0) {
    return {bytes, encoding};
  }
  std::vector<std::string> pieces;
  for (std::size_t i = first; i < first + kinds; ++i) {
    // A piece that the encoding lacks is used unchanged.
    const String piece = Utf8(std::string(kPieces[i % kPieces.size()]));
    pieces.push_back(ConvertEncoding(piece, encoding).Bytes());
  }
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0xC0) {
      text += text.substr(byte % (text.size() / 2 + 1) * 2, kStretch);
    }
    text += pieces[byte % kinds];
  }
  return {text, encoding};
}

}  // namespace zephin::test

#endif  // TESTS_FUZZ_ANY_TEXT_H_
