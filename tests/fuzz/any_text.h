#ifndef TESTS_FUZZ_ANY_TEXT_H_
#define TESTS_FUZZ_ANY_TEXT_H_

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

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

/// A piece in an encoding, or its bytes as they are where that can't hold it.
inline const std::string& PieceIn(Encoding encoding, std::size_t number) {
  using Pieces = std::array<std::string, kPieces.size()>;
  static const std::array<Pieces, 4> kTable = [] {
    std::array<Pieces, 4> table;
    for (std::size_t i = 0; i < table.size(); ++i) {
      for (std::size_t j = 0; j < kPieces.size(); ++j) {
        const String piece = Utf8(std::string(kPieces[j]));
        table[i][j] = ConvertEncoding(piece, static_cast<Encoding>(i)).Bytes();
      }
    }
    return table;
  }();
  return kTable[static_cast<std::size_t>(encoding)][number];
}

/// The pieces that some bytes stand for, of a few kinds only. The largest bytes repeat a stretch
/// from before: a search goes wrong, if at all, where a text resembles itself.
inline std::string TextOfPieces(const std::string& bytes, Encoding encoding, std::size_t first,
                                std::size_t kinds) {
  constexpr std::size_t kMost = 400;
  constexpr std::size_t kStretch = 8;
  std::vector<std::size_t> numbers;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const std::size_t begin = byte < 0xC0 ? numbers.size() : byte % (numbers.size() + 1);
    for (std::size_t i = begin; i < std::min(begin + kStretch, numbers.size()); ++i) {
      numbers.push_back(numbers[i]);
    }
    numbers.push_back((first + byte % kinds) % kPieces.size());
    if (numbers.size() > kMost) {
      break;
    }
  }
  std::string text;
  for (const std::size_t number : numbers) {
    text += PieceIn(encoding, number);
  }
  return text;
}

/// A text in any encoding, made of any bytes or of a few kinds of pieces.
inline String AnyText(FuzzedDataProvider& data, std::size_t most) {
  const auto encoding = static_cast<Encoding>(data.ConsumeIntegralInRange(0, 3));
  const auto kinds = data.ConsumeIntegralInRange<std::size_t>(0, 6);
  const auto first = data.ConsumeIntegralInRange<std::size_t>(0, kPieces.size() - 1);
  const std::string bytes = data.ConsumeRandomLengthString(most);
  return {kinds == 0 ? bytes : TextOfPieces(bytes, encoding, first, kinds), encoding};
}

}  // namespace zephin::test

#endif  // TESTS_FUZZ_ANY_TEXT_H_
