#ifndef TESTS_FUZZ_ANY_TEXT_H_
#define TESTS_FUZZ_ANY_TEXT_H_

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <string>
#include <string_view>

#include "platform/framework/text.h"

namespace zephin::test {

/// Characters, parts of characters and forms of one letter, one beside the other. The last one
/// fills the blocks in which a text is searched.
inline constexpr std::array<std::string_view, 22> kPieces = {
    "a",
    "A",
    "\u00E9",
    "\u00C9",
    "k",
    "\u212A",
    "K",
    "\u017F",
    "s",
    "S",
    "\u00FF",
    "\u0178",
    "|",
    "\xE2\x84",
    "\xAA",
    "\U00010400",
    "\U00010428",
    "\xF0\x90",
    "\xFF",
    "\u6F22",
    std::string_view("\0", 1),
    "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"};

/// A text in any encoding, made of any bytes or of a few kinds of pieces.
inline String AnyText(FuzzedDataProvider& data, std::size_t most) {
  const auto encoding = static_cast<Encoding>(data.ConsumeIntegralInRange(0, 3));
  const auto kinds = data.ConsumeIntegralInRange<std::size_t>(0, 6);
  const auto first = data.ConsumeIntegralInRange<std::size_t>(0, kPieces.size() - 1);
  const std::string bytes = data.ConsumeRandomLengthString(most);
  if (kinds == 0) {
    return {bytes, encoding};
  }
  std::string pieces;
  for (const char byte : bytes) {
    const std::size_t number = first + static_cast<unsigned char>(byte) % kinds;
    const std::string_view piece = kPieces[number % kPieces.size()];
    pieces += ConvertEncoding(Utf8(std::string(piece)), encoding).View();
  }
  return {pieces, encoding};
}

}  // namespace zephin::test

#endif  // TESTS_FUZZ_ANY_TEXT_H_
