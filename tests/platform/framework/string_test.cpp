#include "platform/framework/string.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/framework/text.h"

namespace zephin {
namespace {

using namespace std::string_literals;
using enum Encoding;

TEST(String, JoinedTextsAreLabelledByWhatNeedsALabel) {
  struct Row {
    String head;
    String tail;
    String joined;
  };
  const std::vector<Row> rows = {
      {{"a", MacRoman}, {"b", UTF8}, {"ab", MacRoman}},
      {{"\x8E", MacRoman}, {"b", UTF8}, {"\x8E"s + "b", MacRoman}},
      {{"a", MacRoman}, {"\xC3\xA9", UTF8}, {"a\xC3\xA9", UTF8}},
      {{"a", UTF8}, {"\x8E", MacRoman}, {"a\x8E", MacRoman}},
      {{"\x8E", MacRoman}, {"\xC3\xA9", UTF8}, {"\xC3\xA9\xC3\xA9", UTF8}},
      {{"\xC3\xA9\xFF", UTF8}, {"\x8E", MacRoman}, {"\xC3\xA9\xFF\xC3\xA9", UTF8}},
      {{"", MacRoman}, {"a", None}, {"a", None}},
      {{"a", None}, {"", MacRoman}, {"a", None}},
      {{"\xC3\xA9", None}, {"\x8E", MacRoman}, {"\xC3\xA9\x8E", MacRoman}},
      {{"a", MacRoman}, {"\xC3\xA9", None}, {"a\xC3\xA9", MacRoman}},
      {{"a", UTF8}, {"b\0"s, UTF16}, {"ab", UTF8}},
      {{"\x05\x05", UTF16}, {"b", MacRoman}, {"\xD4\x85"s + "b", UTF8}},
      {{"\x00\xD8"s, UTF16}, {"b", UTF8}, {"\x00\xD8"s + "b", UTF16}},
  };
  for (const auto& row : rows) {
    const String joined = row.head + row.tail;
    EXPECT_EQ(joined.Bytes(), row.joined.Bytes());
    EXPECT_EQ(joined.DeclaredEncoding(), row.joined.DeclaredEncoding()) << row.joined.Bytes();
  }
}

TEST(ConvertEncoding, EveryByteOfMacRomanComesBack) {
  for (int byte = 0; byte < 256; ++byte) {
    const String text(std::string(1, static_cast<char>(byte)), MacRoman);
    for (const Encoding through : {UTF8, UTF16}) {
      const String there = ConvertEncoding(text, through);
      EXPECT_EQ(there.DeclaredEncoding(), through) << byte;
      EXPECT_EQ(ConvertEncoding(there, MacRoman).Bytes(), text.Bytes()) << byte;
    }
  }
}

TEST(ConvertEncoding, TextsAreTranscodedOrComeBackUnchanged) {
  struct Row {
    const char* what;
    String text;
    Encoding wanted;
    String result;
  };
  const std::vector<Row> rows = {
      {"curly quotes", {"\xD2\x8E\xD3", MacRoman}, UTF8, "\u201C\u00E9\u201D"},
      {"euro, increment, logo", "\u20AC\u2206\uF8FF", MacRoman, {"\xDB\xC6\xF0", MacRoman}},
      {"a capital delta isn't the increment", "\u0394", MacRoman, "\u0394"},
      {"one character can't be held", "\u00E9\u6F22", MacRoman, "\u00E9\u6F22"},
      {"invalid UTF-8", {"\xC3\xA9\xC3", UTF8}, MacRoman, {"\xC3\xA9\xC3", UTF8}},
      {"invalid UTF-8", {"\xED\xA0\x80", UTF8}, UTF16, {"\xED\xA0\x80", UTF8}},
      {"plain ASCII", "abcdef", UTF16, {"a\0b\0c\0d\0e\0f\0"s, UTF16}},
      {"three bytes from two", {"#o#o", UTF16}, UTF8, "\u6F23\u6F23"},
      {"NUL and surrogate pair", {"\0\0\x3D\xD8\x00\xDE"s, UTF16}, UTF8, {"\0\U0001F600"s, UTF8}},
      {"surrogate pair", "\U0001F600", UTF16, {"\x3D\xD8\x00\xDE"s, UTF16}},
      {"unpaired surrogate", {"\x3D\xD8"s, UTF16}, UTF8, {"\x3D\xD8"s, UTF16}},
      {"unpaired surrogate", {"\x00\xDC"s, UTF16}, MacRoman, {"\x00\xDC"s, UTF16}},
      {"odd last byte", {"A\0B"s, UTF16}, UTF8, {"A\0B"s, UTF16}},
      {"mark kept as a character", {"\xFF\xFE\x41\0"s, UTF16}, UTF8, "\uFEFFA"},
      {"only labelled", {"\xFF\x8E", None}, UTF8, {"\xFF\x8E", UTF8}},
      {"label dropped", "\u00E9", None, {"\xC3\xA9", None}},
  };
  for (const auto& row : rows) {
    const String result = ConvertEncoding(row.text, row.wanted);
    EXPECT_EQ(result.Bytes(), row.result.Bytes()) << row.what;
    EXPECT_EQ(result.DeclaredEncoding(), row.result.DeclaredEncoding()) << row.what;
  }
}

}  // namespace
}  // namespace zephin
