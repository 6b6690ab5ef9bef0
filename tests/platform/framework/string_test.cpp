#include "platform/framework/string.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/framework/text.h"

namespace zephin {
namespace {

using namespace std::string_literals;

TEST(String, JoinedTextsAreLabelledByWhatNeedsALabel) {
  const Encoding none = Encoding::None;
  const Encoding utf8 = Encoding::UTF8;
  const Encoding mac = Encoding::MacRoman;
  const Encoding utf16 = Encoding::UTF16;
  const struct {
    String head;
    String tail;
    String joined;
  } rows[] = {
      {{"a", mac}, {"b", utf8}, {"ab", mac}},
      {{"\x8E", mac}, {"b", utf8}, {"\x8E"s + "b", mac}},
      {{"a", mac}, {"\xC3\xA9", utf8}, {"a\xC3\xA9", utf8}},
      {{"a", utf8}, {"\x8E", mac}, {"a\x8E", mac}},
      {{"\x8E", mac}, {"\xC3\xA9", utf8}, {"\xC3\xA9\xC3\xA9", utf8}},
      {{"\xC3\xA9\xFF", utf8}, {"\x8E", mac}, {"\xC3\xA9\xFF\xC3\xA9", utf8}},
      {{"\x8E", mac}, {"\x8E", mac}, {"\x8E\x8E", mac}},
      {{"", mac}, {"a", none}, {"a", none}},
      {{"a", none}, {"", mac}, {"a", none}},
      {{"\xC3\xA9", none}, {"\x8E", mac}, {"\xC3\xA9\x8E", mac}},
      {{"\x8E", mac}, {"\xC3\xA9", none}, {"\x8E\xC3\xA9", mac}},
      {{"a", utf8}, {"b\0"s, utf16}, {"ab", utf8}},
      {{"\x05\x05", utf16}, {"b", mac}, {"\xD4\x85"s + "b", utf8}},
      {{"\x00\xD8"s, utf16}, {"b", utf8}, {"\x00\xD8"s + "b", utf16}},
  };
  for (const auto& row : rows) {
    const String joined = row.head + row.tail;
    EXPECT_EQ(joined.Bytes(), row.joined.Bytes()) << &row - rows;
    EXPECT_EQ(joined.DeclaredEncoding(), row.joined.DeclaredEncoding()) << &row - rows;
  }
}

TEST(String, JoinedToItselfItDoubles) {
  String text("ab");
  text += text;
  EXPECT_EQ(text, "abab");
}

TEST(ConvertEncoding, EveryByteOfMacRomanComesBack) {
  for (int byte = 0; byte < 256; ++byte) {
    const String text(std::string(1, static_cast<char>(byte)), Encoding::MacRoman);
    for (const Encoding through : {Encoding::UTF8, Encoding::UTF16}) {
      const String there = ConvertEncoding(text, through);
      EXPECT_EQ(there.DeclaredEncoding(), through) << byte;
      EXPECT_EQ(ConvertEncoding(there, Encoding::MacRoman).Bytes(), text.Bytes()) << byte;
    }
  }
}

TEST(ConvertEncoding, TextsAreTranscodedOrComeBackUnchanged) {
  const Encoding none = Encoding::None;
  const Encoding utf8 = Encoding::UTF8;
  const Encoding mac = Encoding::MacRoman;
  const Encoding utf16 = Encoding::UTF16;
  const struct {
    const char* what;
    String text;
    Encoding wanted;
    String result;
  } rows[] = {
      {"curly quotes", {"\xD2\x8E\xD3", mac}, utf8, "\u201C\u00E9\u201D"},
      {"euro, increment, logo", "\u20AC\u2206\uF8FF", mac, {"\xDB\xC6\xF0", mac}},
      {"a capital delta isn't the increment", "\u0394", mac, "\u0394"},
      {"one character can't be held", "\u00E9\u6F22", mac, "\u00E9\u6F22"},
      {"invalid UTF-8", {"\xC3\xA9\xC3", utf8}, mac, {"\xC3\xA9\xC3", utf8}},
      {"invalid UTF-8", {"\xED\xA0\x80", utf8}, utf16, {"\xED\xA0\x80", utf8}},
      {"NUL and surrogate pair", {"\0\0\x3D\xD8\x00\xDE"s, utf16}, utf8, {"\0\U0001F600"s, utf8}},
      {"surrogate pair", "\U0001F600", utf16, {"\x3D\xD8\x00\xDE"s, utf16}},
      {"unpaired surrogate", {"\x3D\xD8"s, utf16}, utf8, {"\x3D\xD8"s, utf16}},
      {"unpaired surrogate", {"\x00\xDC"s, utf16}, mac, {"\x00\xDC"s, utf16}},
      {"odd last byte", {"A\0B"s, utf16}, utf8, {"A\0B"s, utf16}},
      {"mark kept as a character", {"\xFF\xFE\x41\0"s, utf16}, utf8, "\uFEFFA"},
      {"only labelled", {"\xFF\x8E", none}, utf8, {"\xFF\x8E", utf8}},
      {"label dropped", "\u00E9", none, {"\xC3\xA9", none}},
      {"empty", {"", utf16}, utf8, ""},
  };
  for (const auto& row : rows) {
    const String result = ConvertEncoding(row.text, row.wanted);
    EXPECT_EQ(result.Bytes(), row.result.Bytes()) << row.what;
    EXPECT_EQ(result.DeclaredEncoding(), row.result.DeclaredEncoding()) << row.what;
  }
}

}  // namespace
}  // namespace zephin
