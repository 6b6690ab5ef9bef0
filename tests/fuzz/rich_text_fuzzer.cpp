// Reads any bytes as a page text of the record, and as one in digits. Finds pages that aren't what
// a plain reading gives.
#include <algorithm>
#include <string>

#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/plain_text.h"

namespace zephin::test {
namespace {

constexpr std::string_view kMarker = "$HTML$";

bool HoldsMarker(std::string_view field) {
  const auto same = [](char a, char b) {
    return a == b || (b >= 'A' && b <= 'Z' && a == b - 'A' + 'a');
  };
  return std::search(field.begin(), field.end(), kMarker.begin(), kMarker.end(), same) !=
         field.end();
}

/// Line feeds for bars, up to the first byte 0.
std::string WithLineFeeds(std::string text) {
  std::replace(text.begin(), text.end(), '|', '\n');
  return text.substr(0, text.find('\0'));
}

unsigned ValueOf(char c) {
  const auto digit = static_cast<unsigned char>(c);
  return digit >= '0' && digit <= '9' ? digit - '0' : digit >= 'A' ? digit - 'A' + 10U : digit;
}

/// The UTF-16 of the digits as UTF-8, half a unit dropped, what is no character marked as lost.
std::string FromDigits(const std::string& digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes += static_cast<char>(16 * ValueOf(digits[i]) + ValueOf(digits[i + 1]));
  }
  std::string text;
  for (const PlainCharacter& character : PlainCharacters(bytes, Encoding::UTF16)) {
    constexpr std::uint32_t kLost = 0xFFFD;
    if (character.code < kRaw) {
      text += PlainUtf8(IsScalar(character.code) ? character.code : kLost);
    }
  }
  return text;
}

void ReadPage(const std::string& field) {
  static BareStub<> stub;
  const String page = stub.Window().ReadPlainOrHtmlText(Utf8(field));
  if (!HoldsMarker(field)) {
    Require(page.Bytes() == WithLineFeeds(field));
    Require(page.DeclaredEncoding() == Encoding::MacRoman);
    return;
  }
  const auto characters = PlainCharacters(field, Encoding::UTF8);
  Require(characters.size() >= kMarker.size());
  const std::size_t begin = characters[kMarker.size() - 1].end;
  Require(page.Bytes() == FromDigits(WithLineFeeds(field.substr(begin))));
  Require(page.DeclaredEncoding() == Encoding::UTF8);
}

}  // namespace
}  // namespace zephin::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string input(zephin::test::AsText(bytes, size));
  zephin::test::ReadPage(input);
  zephin::test::ReadPage(std::string(zephin::test::kMarker) + input);
  return 0;
}
