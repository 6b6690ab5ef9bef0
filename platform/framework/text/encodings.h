#ifndef PLATFORM_FRAMEWORK_TEXT_ENCODINGS_H_
#define PLATFORM_FRAMEWORK_TEXT_ENCODINGS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/framework/string.h"

// How the bytes of a text become characters and back: what the string library (text.h) is built
// on, and nobody else's business. A character is a number: its code point, or, for what is invalid
// in the encoding, a number of its own that stands for that very byte and for nothing else.

namespace zephin {

/// Numbers from here on stand for bytes that are no text: an invalid byte, and in a text without
/// encoding every byte outside ASCII. An unpaired surrogate of UTF-16 keeps its own number.
constexpr std::uint32_t kRawByte = 0x110000;

struct Character {
  std::uint32_t code = 0;
  /// Bytes that it takes in its text: at least 1.
  std::size_t size = 0;
};

/// The character that begins at `offset`, which must lie inside the bytes.
Character DecodeCharacter(std::string_view bytes, std::size_t offset, Encoding encoding);

/// Appends a character, raw bytes and unpaired surrogates included. False, and nothing appended, if
/// the encoding can't hold it.
[[nodiscard]] bool AppendCharacter(std::string& bytes, std::uint32_t code, Encoding encoding);

/// How many bytes from `offset` on are ASCII, up to the first that isn't.
std::size_t AsciiRun(std::string_view bytes, std::size_t offset);
bool IsAscii(std::string_view bytes);

std::size_t CountCharacters(std::string_view bytes, Encoding encoding);
/// Where the character with `index` (from 0) begins; the end for an index behind the last one.
std::size_t OffsetOfCharacter(std::string_view bytes, Encoding encoding, std::size_t index);

/// The bytes in another encoding, neither of them None. Nothing for bytes that are invalid in
/// `from` or hold a character that `to` lacks.
std::optional<std::string> Transcode(std::string_view bytes, Encoding from, Encoding to);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_TEXT_ENCODINGS_H_
