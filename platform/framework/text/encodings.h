#ifndef PLATFORM_FRAMEWORK_TEXT_ENCODINGS_H_
#define PLATFORM_FRAMEWORK_TEXT_ENCODINGS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/framework/string.h"

// Decoding of bytes to characters and back, the base of the string functions (text.h). A character
// is a number: its code point, or, for a byte that is invalid in the encoding, a number of its own
// that no other byte and no code point has.

namespace zephin {

/// Numbers from here on mean raw bytes: invalid ones, and all bytes from 0x80 on in a text without
/// encoding. An unpaired surrogate of UTF-16 keeps its own number.
constexpr std::uint32_t kRawByte = 0x110000;

/// A decoded character.
struct Character {
  std::uint32_t code = 0;
  /// Its length in bytes, at least 1.
  std::size_t size = 0;
};

/// The character that begins at `offset`, which must be less than the number of bytes.
Character DecodeCharacter(std::string_view bytes, std::size_t offset, Encoding encoding);

/// Appends a character; raw bytes and unpaired surrogates are written as they were read. False,
/// with nothing appended, if the encoding cannot represent it.
[[nodiscard]] bool AppendCharacter(std::string& bytes, std::uint32_t code, Encoding encoding);

/// Number of bytes from `offset` to the first that is not ASCII.
std::size_t AsciiRun(std::string_view bytes, std::size_t offset);
bool IsAscii(std::string_view bytes);

/// Number of characters.
std::size_t CountCharacters(std::string_view bytes, Encoding encoding);
/// Byte offset of character `index` (from 0); the end of the bytes if there is no such character.
std::size_t OffsetOfCharacter(std::string_view bytes, Encoding encoding, std::size_t index);

/// The bytes converted to another encoding; neither may be None. Nothing if the bytes are invalid
/// in `from` or contain a character that `to` lacks.
std::optional<std::string> Transcode(std::string_view bytes, Encoding from, Encoding to);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_TEXT_ENCODINGS_H_
