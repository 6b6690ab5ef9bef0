#ifndef TESTS_FUZZ_PLAIN_TEXT_H_
#define TESTS_FUZZ_PLAIN_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/framework/string.h"

/// The encodings once more, as plainly as they can be written: what the fuzzers hold the string
/// library to. No attention is paid to speed.
namespace zephin::test {

/// Numbers from here on stand for bytes that are no text.
inline constexpr std::uint32_t kRaw = 0x110000;

/// A character, numbered as encodings.h does it, and where it ends in its text.
struct PlainCharacter {
  std::uint32_t code;
  std::size_t end;
};

std::vector<PlainCharacter> PlainCharacters(std::string_view bytes, Encoding encoding);

/// Whether the number is a code point other than a surrogate's.
bool IsScalar(std::uint32_t code);

/// The UTF-8 form of a scalar.
std::string PlainUtf8(std::uint32_t code);

}  // namespace zephin::test

#endif  // TESTS_FUZZ_PLAIN_TEXT_H_
