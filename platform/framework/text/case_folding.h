#ifndef PLATFORM_FRAMEWORK_TEXT_CASE_FOLDING_H_
#define PLATFORM_FRAMEWORK_TEXT_CASE_FOLDING_H_

#include <array>
#include <cstdint>
#include <optional>

#include "platform/framework/string.h"

// Letter case of characters, numbered as in encodings.h. Each character maps to one character, by
// the same rules for all languages. Raw bytes have no letter case.

namespace zephin {

/// The representative of all forms of a letter. Two characters are equal, ignoring letter case, if
/// their results are equal.
std::uint32_t FoldCharacter(std::uint32_t code);
/// The upper or lower case form; the character itself if it has none.
std::uint32_t UpperCharacter(std::uint32_t code);
std::uint32_t LowerCharacter(std::uint32_t code);

/// Folding tables for an encoding in which each character is one byte.
struct ByteFolding {
  /// The folded character of each byte.
  std::array<std::uint32_t, 256> characters{};
  /// The lowest byte with the same folded character, for each byte.
  std::array<unsigned char, 256> bytes{};
  /// Whether another byte has the same folded character.
  std::array<bool, 256> hasForms{};

  /// The lowest byte with this folded character; nothing if there is none.
  std::optional<unsigned char> ByteOf(std::uint32_t folded) const;
};

/// The tables for Mac Roman; for all other encodings those for ASCII, in which bytes from 0x80 on
/// have no letter case.
const ByteFolding& FoldingOfBytes(Encoding encoding);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_TEXT_CASE_FOLDING_H_
