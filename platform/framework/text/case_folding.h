#ifndef PLATFORM_FRAMEWORK_TEXT_CASE_FOLDING_H_
#define PLATFORM_FRAMEWORK_TEXT_CASE_FOLDING_H_

#include <array>
#include <cstdint>
#include <optional>

#include "platform/framework/string.h"

// Letter case of characters as encodings.h numbers them: one character to one, in no language's
// special way. Raw bytes have none.

namespace zephin {

/// The character that all forms of a letter have in common: two characters are equal when letter
/// case is ignored if these are.
std::uint32_t FoldCharacter(std::uint32_t code);
std::uint32_t UpperCharacter(std::uint32_t code);
std::uint32_t LowerCharacter(std::uint32_t code);

/// Folding by bytes, for a text in which a character is a byte.
struct ByteFolding {
  /// For each byte its folded character.
  std::array<std::uint32_t, 256> characters{};
  /// For each byte the first byte of the same folded character.
  std::array<unsigned char, 256> bytes{};
  /// Whether other bytes are of the same folded character.
  std::array<bool, 256> hasForms{};

  /// The byte in `bytes` of a folded character; nothing if no byte is of it.
  std::optional<unsigned char> ByteOf(std::uint32_t folded) const;
};

/// The folding of Mac Roman; for the other encodings that of ASCII, which leaves the upper half
/// alone.
const ByteFolding& FoldingOfBytes(Encoding encoding);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_TEXT_CASE_FOLDING_H_
