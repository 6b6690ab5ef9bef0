#include "platform/framework/text/case_folding.h"

#include <utf8proc.h>

#include <algorithm>

#include "platform/framework/text/encodings.h"
#include "platform/framework/text/mac_roman.h"

namespace zephin {
namespace {

bool IsAsciiUpper(std::uint32_t code) {
  return code >= 'A' && code <= 'Z';
}

bool IsAsciiLower(std::uint32_t code) {
  return code >= 'a' && code <= 'z';
}

std::uint32_t FoldBeyondAscii(std::uint32_t code) {
  // The dotted capital I has no simple folding: its lower case is a plain "i", which would make it
  // equal to "I".
  constexpr std::uint32_t kDottedCapitalI = 0x130;
  std::array<utf8proc_int32_t, 8> folded{};
  int boundClass = 0;
  const auto character = static_cast<utf8proc_int32_t>(code);
  const utf8proc_ssize_t count = utf8proc_decompose_char(character, folded.data(), folded.size(),
                                                         UTF8PROC_CASEFOLD, &boundClass);
  if (count == 1) {
    return static_cast<std::uint32_t>(folded[0]);
  }
  // A folding to several characters would shift all positions after it.
  return code == kDottedCapitalI ? code : static_cast<std::uint32_t>(utf8proc_tolower(character));
}

std::uint32_t CodeOfByte(unsigned byte, Encoding encoding) {
  if (byte < 0x80) {
    return byte;
  }
  return encoding == Encoding::MacRoman ? DecodeMacRoman(static_cast<unsigned char>(byte))
                                        : kRawByte + byte;
}

ByteFolding MakeByteFolding(Encoding encoding) {
  ByteFolding folding;
  for (unsigned byte = 0; byte < 256; ++byte) {
    folding.characters[byte] = FoldCharacter(CodeOfByte(byte, encoding));
    const unsigned char first = folding.ByteOf(folding.characters[byte]).value();
    folding.bytes[byte] = first;
    if (first != byte) {
      folding.hasForms[byte] = folding.hasForms[first] = true;
    }
  }
  return folding;
}

}  // namespace

std::uint32_t FoldCharacter(std::uint32_t code) {
  if (code < 0x80) {
    return IsAsciiUpper(code) ? code + ('a' - 'A') : code;
  }
  return code < kRawByte ? FoldBeyondAscii(code) : code;
}

std::uint32_t UpperCharacter(std::uint32_t code) {
  if (code < 0x80) {
    return IsAsciiLower(code) ? code - ('a' - 'A') : code;
  }
  return code < kRawByte
             ? static_cast<std::uint32_t>(utf8proc_toupper(static_cast<utf8proc_int32_t>(code)))
             : code;
}

std::uint32_t LowerCharacter(std::uint32_t code) {
  if (code < 0x80) {
    return IsAsciiUpper(code) ? code + ('a' - 'A') : code;
  }
  return code < kRawByte
             ? static_cast<std::uint32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(code)))
             : code;
}

std::optional<unsigned char> ByteFolding::ByteOf(std::uint32_t folded) const {
  const auto* const found = std::find(characters.begin(), characters.end(), folded);
  if (found == characters.end()) {
    return std::nullopt;
  }
  return static_cast<unsigned char>(found - characters.begin());
}

const ByteFolding& FoldingOfBytes(Encoding encoding) {
  // Made once, on first use.
  static const ByteFolding ascii = MakeByteFolding(Encoding::None);
  static const ByteFolding macRoman = MakeByteFolding(Encoding::MacRoman);
  return encoding == Encoding::MacRoman ? macRoman : ascii;
}

}  // namespace zephin
