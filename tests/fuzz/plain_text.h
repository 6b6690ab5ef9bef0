#ifndef TESTS_FUZZ_PLAIN_TEXT_H_
#define TESTS_FUZZ_PLAIN_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/framework/string.h"
#include "platform/framework/text/mac_roman.h"

/// A simple implementation of the encodings, with which the fuzzers compare the string library.
namespace zephin::test {

/// Numbers from here on represent invalid bytes.
inline constexpr std::uint32_t kRaw = 0x110000;

/// A character, numbered as encodings.h does it, and where it ends in its text.
struct PlainCharacter {
  std::uint32_t code;
  std::size_t end;
};

/// Whether the number is a code point other than a surrogate's.
inline bool IsScalar(std::uint32_t code) {
  return code < kRaw && (code < 0xD800 || code > 0xDFFF);
}

/// The UTF-8 form of a scalar.
inline std::string PlainUtf8(std::uint32_t code) {
  const auto tail = [code](unsigned shift) {
    return static_cast<char>(0x80U | (code >> shift & 0x3FU));
  };
  if (code < 0x80) {
    return {static_cast<char>(code)};
  }
  if (code < 0x800) {
    return {static_cast<char>(0xC0U | code >> 6U), tail(0)};
  }
  if (code < 0x10000) {
    return {static_cast<char>(0xE0U | code >> 12U), tail(6), tail(0)};
  }
  return {static_cast<char>(0xF0U | code >> 18U), tail(12), tail(6), tail(0)};
}

inline std::uint32_t ByteOf(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

inline PlainCharacter Utf8At(std::string_view bytes, std::size_t at) {
  const std::uint32_t lead = ByteOf(bytes, at);
  const std::size_t size = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  std::uint32_t code = size == 1 ? lead : lead & (0x7FU >> size);
  for (std::size_t i = 1; i < size && at + i < bytes.size(); ++i) {
    code = code << 6U | (ByteOf(bytes, at + i) & 0x3FU);
  }
  // A sequence is valid if encoding its code gives the same bytes.
  if (IsScalar(code) && PlainUtf8(code) == bytes.substr(at, size)) {
    return {code, at + size};
  }
  return {kRaw + lead, at + 1};
}

inline PlainCharacter Utf16At(std::string_view bytes, std::size_t at) {
  const std::size_t left = bytes.size() - at;
  if (left == 1) {
    return {kRaw + ByteOf(bytes, at), at + 1};
  }
  const std::uint32_t unit = ByteOf(bytes, at) + 256 * ByteOf(bytes, at + 1);
  if (left >= 4 && unit / 0x400 == 0xD800 / 0x400) {
    const std::uint32_t next = ByteOf(bytes, at + 2) + 256 * ByteOf(bytes, at + 3);
    if (next / 0x400 == 0xDC00 / 0x400) {
      return {0x10000 + unit % 0x400 * 0x400 + next % 0x400, at + 4};
    }
  }
  return {unit, at + 2};
}

inline PlainCharacter CharacterAt(std::string_view bytes, std::size_t at, Encoding encoding) {
  const std::uint32_t byte = ByteOf(bytes, at);
  switch (encoding) {
    case Encoding::UTF8:
      return Utf8At(bytes, at);
    case Encoding::UTF16:
      return Utf16At(bytes, at);
    case Encoding::MacRoman:
      return {DecodeMacRoman(static_cast<unsigned char>(byte)), at + 1};
    default:
      return {byte < 0x80 ? byte : kRaw + byte, at + 1};
  }
}

inline std::vector<PlainCharacter> PlainCharacters(std::string_view bytes, Encoding encoding) {
  std::vector<PlainCharacter> characters;
  for (std::size_t at = 0; at < bytes.size(); at = characters.back().end) {
    characters.push_back(CharacterAt(bytes, at, encoding));
  }
  return characters;
}

}  // namespace zephin::test

#endif  // TESTS_FUZZ_PLAIN_TEXT_H_
