#include "platform/framework/string.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "platform/framework/text.h"

namespace zephin {
namespace {

using namespace std::string_literals;
using enum Encoding;

TEST(String, JoinedTextHasTheEncodingOfItsNonAsciiPart) {
  const std::vector<std::tuple<String, String, String>> rows = {
      {{"a", MacRoman}, {"b", UTF8}, {"ab", MacRoman}},
      {{"\x8E", MacRoman}, {"b", UTF8}, {"\x8E"s + "b", MacRoman}},
      {{"a", MacRoman}, {"\xC3\xA9", UTF8}, {"a\xC3\xA9", UTF8}},
      {{"a", UTF8}, {"\x8E", MacRoman}, {"a\x8E", MacRoman}},
      {{"\x8E", MacRoman}, {"\xC3\xA9", UTF8}, {"\xC3\xA9\xC3\xA9", UTF8}},
      {{"\xC3\xA9\xFF", UTF8}, {"\x8E", MacRoman}, {"\xC3\xA9\xFF\xC3\xA9", UTF8}},
      {{"a", None}, {"", MacRoman}, {"a", None}},
      {{"\xC3\xA9", None}, {"\x8E", MacRoman}, {"\xC3\xA9\x8E", MacRoman}},
      {{"a", UTF8}, {"b\0"s, UTF16}, {"ab", UTF8}},
      {{"\x05\x05", UTF16}, {"b", MacRoman}, {"\xD4\x85"s + "b", UTF8}},
      {{"\x00\xD8"s, UTF16}, {"b", UTF8}, {"\x00\xD8"s + "b", UTF16}},
  };
  for (const auto& [head, tail, expected] : rows) {
    const String joined = head + tail;
    EXPECT_EQ(joined.Bytes(), expected.Bytes());
    EXPECT_EQ(joined.DeclaredEncoding(), expected.DeclaredEncoding()) << expected.Bytes();
  }
}

// A fuzzer tests arbitrary bytes, but does not check the table of Mac Roman.
TEST(ConvertEncoding, ConvertsOrReturnsTheTextUnchanged) {
  const std::vector<std::tuple<String, Encoding, String>> rows = {
      {{"\xD2\x8E\xD3", MacRoman}, UTF8, "\u201C\u00E9\u201D"},
      {"\u20AC\u2206\uF8FF", MacRoman, {"\xDB\xC6\xF0", MacRoman}},
      // A capital delta is not the increment sign.
      {"\u0394", MacRoman, "\u0394"},
      {"\u00E9\u6F22", MacRoman, "\u00E9\u6F22"},
      {{"\xC3\xA9\xC3", UTF8}, MacRoman, {"\xC3\xA9\xC3", UTF8}},
      {"abc", UTF16, {"a\0b\0c\0"s, UTF16}},
      {{"\0\0\x3D\xD8\x00\xDE"s, UTF16}, UTF8, {"\0\U0001F600"s, UTF8}},
      {{"\x3D\xD8"s, UTF16}, UTF8, {"\x3D\xD8"s, UTF16}},
      // A byte order mark is kept as a character.
      {{"\xFF\xFE\x41\0"s, UTF16}, UTF8, "\uFEFFA"},
      {{"\xFF\x8E", None}, UTF8, {"\xFF\x8E", UTF8}},
  };
  for (const auto& [text, wanted, expected] : rows) {
    const String result = ConvertEncoding(text, wanted);
    EXPECT_EQ(result.Bytes(), expected.Bytes()) << text.Bytes();
    EXPECT_EQ(result.DeclaredEncoding(), expected.DeclaredEncoding()) << text.Bytes();
  }
}

}  // namespace
}  // namespace zephin
