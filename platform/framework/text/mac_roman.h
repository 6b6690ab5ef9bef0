#ifndef PLATFORM_FRAMEWORK_TEXT_MAC_ROMAN_H_
#define PLATFORM_FRAMEWORK_TEXT_MAC_ROMAN_H_

#include <cstdint>
#include <optional>

// The Mac's encoding of one byte a character. Every byte is a character of it.

namespace zephin {

/// The code point of a byte.
std::uint32_t DecodeMacRoman(unsigned char byte);
/// The byte of a code point; nothing for one that the encoding lacks.
std::optional<unsigned char> EncodeMacRoman(std::uint32_t code);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_TEXT_MAC_ROMAN_H_
