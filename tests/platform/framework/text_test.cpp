#include "platform/framework/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace zephin {
namespace {

using namespace std::string_literals;

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(Len, InvalidBytesCountOneEach) {
  const struct {
    String text;
    std::int64_t length;
  } rows[] = {
      {"", 0},
      {"a\u00E9\u6F22\U0001F600", 4},
      {{"a\u00E9", Encoding::None}, 3},
      {{"a\u00E9", Encoding::MacRoman}, 3},
      {{"\xE6\xBC", Encoding::UTF8}, 2},
      {{"\xE6\xBC\x41", Encoding::UTF8}, 3},
      {{"\xC0\x80\xFF", Encoding::UTF8}, 3},
      {{"\xED\xA0\x80", Encoding::UTF8}, 3},
      {{"\xF4\x90\x80\x80", Encoding::UTF8}, 4},
      {{"12345678\xE6", Encoding::UTF8}, 9},
      {{"A\0\x3D\xD8\x00\xDE"s, Encoding::UTF16}, 2},
      {{"\x3D\xD8\x3D\xD8\x00\xDE\x00\xDE\x41"s, Encoding::UTF16}, 4},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Len(row.text), row.length) << row.text.Bytes();
  }
}

TEST(Mid, EveryStartAndCountIsClippedToTheText) {
  const String text("a\u00E9\u6F22z");
  const struct {
    std::int64_t start;
    std::int64_t count;
    const char* part;
  } rows[] = {
      {1, 2, "a\u00E9"},
      {2, 2, "\u00E9\u6F22"},
      {4, 9, "z"},
      {5, 1, ""},
      {0, 1, "a"},
      {kMin, 1, "a"},
      {2, 0, ""},
      {2, kMin, ""},
      {kMax, 1, ""},
      {kMax, kMax, ""},
      {4, 1, "z"},
      {3, kMax, "\u6F22z"},
      {-3, kMax, "a\u00E9\u6F22z"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Mid(text, row.start, row.count), row.part) << row.start << " " << row.count;
  }
  EXPECT_EQ(Mid(text, 3), "\u6F22z");
  EXPECT_EQ(Mid(text, 5), "");
  EXPECT_EQ(Left(text, 2), "a\u00E9");
  EXPECT_EQ(Left(text, -1), "");
  EXPECT_EQ(Right(text, 2), "\u6F22z");
  EXPECT_EQ(Right(text, 0), "");
  EXPECT_EQ(Right(text, kMax), text);
}

TEST(InStr, PositionsAreThoseOfTheOriginalText) {
  const struct {
    const char* what;
    std::int64_t start;
    String haystack;
    String needle;
    std::int64_t position;
  } rows[] = {
      {"empty needle", 1, "abc", "", 0},
      {"empty needle and text", 1, "", "", 0},
      {"empty text", 1, "", "a", 0},
      {"ASCII case", 1, "x$html$", "$HTML$", 2},
      {"start at the match", 3, "abab", "AB", 3},
      {"start behind it", 4, "abab", "AB", 0},
      {"start far behind", kMax, "abab", "ab", 0},
      {"start below 1", kMin, "abab", "ab", 1},
      {"form of another size before", 1, "\u212A\u017F\u1E9Ez", "Z", 4},
      {"form of another size matched", 2, "\u212Ax\u212A", "K", 3},
      {"long s", 1, "\u00E9me\u017F\u017Fage", "MESS", 2},
      {"accents", 1, "\u6F22\u00C9t\u00E9", "\u00E9T\u00C9", 2},
      {"sharp s is no two letters", 1, "Strasse", "\u00DF", 0},
      {"dotted I is no i", 1, "\u0130", "i", 0},
      {"final sigma", 1, "\u03A3\u03B1\u03C2", "\u03C3\u03B1\u03C3", 1},
      {"invalid byte", 1, {"\xC3\xA9\xFF\xA9", Encoding::UTF8}, {"\xA9", Encoding::UTF8}, 3},
      {"start of a character", 1, "\u6F22", {"\xE6\xBC", Encoding::UTF8}, 0},
      {"invalid byte of another encoding",
       1,
       {"\x8E", Encoding::MacRoman},
       {"\x8E", Encoding::UTF8},
       0},
      {"Mac Roman in UTF-8", 1, "x\u00E9", {"\x83", Encoding::MacRoman}, 2},
      {"UTF-8 in Mac Roman", 1, {"\xD0\xD8", Encoding::MacRoman}, "\u0178", 2},
      {"UTF-8 in UTF-16", 1, {"\x3D\xD8\x00\xDE\xE9\0"s, Encoding::UTF16}, "\u00C9", 2},
      {"half of a character in UTF-16", 1, {"\x41\x42\x43\x44", Encoding::UTF16}, "B", 0},
      {"no encoding in UTF-8", 1, "x\u00E9", {"\xC3\xA9", Encoding::None}, 2},
      {"no encoding, not inside a character", 1, "x\u00E9", {"\xA9", Encoding::None}, 0},
      {"UTF-8 in no encoding", 1, {"\xC3\xA9x\xC3\xA9", Encoding::None}, "x\u00E9", 3},
      {"no encoding has no accents", 1, {"\xC3\xA9", Encoding::None}, "\u00C9", 0},
      {"after a NUL", 1, {"a\0b"s, Encoding::UTF8}, "B", 3},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(InStr(row.start, row.haystack, row.needle), row.position) << row.what;
  }
  EXPECT_EQ(InStr("abc", "C"), 3);
}

TEST(InStr, FindsAMatchWhereverABlockOfTheTextEnds) {
  for (std::int64_t i = 0; i < 1100; ++i) {
    const String filler(std::string(static_cast<std::size_t>(i), 'x'), Encoding::UTF8);
    EXPECT_EQ(InStr(filler + "Needle", "needle"), i + 1);
    EXPECT_EQ(InStr(filler + "a\u212Ax", "AK"), i + 1);
    EXPECT_EQ(InStr(filler + "\u017F", "s"), i + 1);
  }
}

TEST(InStrB, CountsBytesAndLetterCase) {
  EXPECT_EQ(InStrB(1, "\u00E9aA", "A"), 4);
  EXPECT_EQ(InStrB(4, "\u00E9aAA", "A"), 4);
  EXPECT_EQ(InStrB(5, "\u00E9aA", "A"), 0);
  EXPECT_EQ(InStrB(kMin, "A", {"A", Encoding::UTF16}), 1);
  EXPECT_EQ(InStrB(kMax, "A", "A"), 0);
  EXPECT_EQ(InStrB(1, "A", ""), 0);
  EXPECT_EQ(InStrB(1, "\u00E9", {"\xA9", Encoding::None}), 2);
}

TEST(Asc, IsTheByteWhereACharacterIsOne) {
  EXPECT_EQ(Asc(""), 0);
  EXPECT_EQ(Asc("\u6F22x"), 0x6F22);
  EXPECT_EQ(Asc({"\xFF", Encoding::UTF8}), 0xFF);
  EXPECT_EQ(Asc({"\x8E", Encoding::MacRoman}), 0x8E);
  EXPECT_EQ(Asc({"\x8E", Encoding::None}), 0x8E);
  EXPECT_EQ(Asc({"\x3D\xD8\x00\xDE"s, Encoding::UTF16}), 0x1F600);
  EXPECT_EQ(Asc({"\xE9", Encoding::UTF16}), 0xE9);
}

TEST(Chr, IsEmptyForWhatIsNoCharacter) {
  EXPECT_EQ(Chr(10), "\n");
  EXPECT_EQ(Chr(0).Size(), 1U);
  EXPECT_EQ(Chr(0x10FFFF), "\U0010FFFF");
  EXPECT_EQ(Chr(0x110000), "");
  EXPECT_EQ(Chr(0xFFFFFFFF), "");
  EXPECT_EQ(Chr(0xD800), "");
}

TEST(LetterCase, MapsWhatTheEncodingHolds) {
  EXPECT_EQ(Uppercase({"a\u00E9\xFF", Encoding::UTF8}), (String("A\u00C9\xFF", Encoding::UTF8)));
  EXPECT_EQ(Lowercase("A\u00C9\u212A"), "a\u00E9k");
  EXPECT_EQ(Uppercase({"a\x8E\xB5\xD8", Encoding::MacRoman}).Bytes(), "A\x83\xB5\xD9");
  EXPECT_EQ(Uppercase({"a\xC3\xA9", Encoding::None}).Bytes(), "A\xC3\xA9");
  EXPECT_EQ(Lowercase({"\x41\0\x01\xD8\x00\xDC\x01\xD8"s, Encoding::UTF16}).Bytes(),
            "\x61\0\x01\xD8\x28\xDC\x01\xD8"s);
}

TEST(StrComp, Mode0ComparesBytesAndMode1Characters) {
  const struct {
    String a;
    String b;
    int bytes;
    int characters;
  } rows[] = {
      {"", "", 0, 0},
      {"a", "A", 1, 0},
      {"a", "B", 1, -1},
      {"ab", "a", 1, 1},
      {"", "a", -1, -1},
      {"\u00E9", "\u00C9", 1, 0},
      {"\u00E9", {"\x83", Encoding::MacRoman}, 1, 0},
      {{"\x8E", Encoding::MacRoman}, {"\x8E", Encoding::UTF8}, 0, -1},
      {{"\xC3\xA9", Encoding::None}, "\u00E9", 0, 0},
      {{"\xC3\xA9", Encoding::None}, {"\xC3\x89", Encoding::None}, 1, 1},
      {{"\xFF", Encoding::UTF8}, {"\xFE", Encoding::UTF8}, 1, 1},
      {"k", "\u212A", -1, 0},
  };
  const auto sign = [](int value) { return (value > 0) - (value < 0); };
  for (const auto& row : rows) {
    EXPECT_EQ(sign(StrComp(row.a, row.b, 0)), row.bytes) << row.a.Bytes();
    EXPECT_EQ(sign(StrComp(row.a, row.b, 1)), row.characters) << row.a.Bytes();
    EXPECT_EQ(sign(StrComp(row.b, row.a, 1)), -row.characters) << row.a.Bytes();
    EXPECT_EQ(TextEquals(row.a, row.b), row.characters == 0) << row.a.Bytes();
  }
}

}  // namespace
}  // namespace zephin
