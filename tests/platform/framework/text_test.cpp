#include "platform/framework/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace zephin {
namespace {

using namespace std::string_literals;
using enum Encoding;

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(Len, InvalidBytesCountOneEach) {
  struct Row {
    String text;
    std::int64_t length;
  };
  const std::vector<Row> rows = {
      {"a\u00E9\u6F22\U0001F600", 4},       {{"\xE6\xBC", UTF8}, 2},
      {{"\xC0\x80\xFF", UTF8}, 3},          {{"\xED\xA0\x80", UTF8}, 3},
      {{"\xF4\x90\x80\x80", UTF8}, 4},      {{"12345678\xE6", UTF8}, 9},
      {{"A\0\x3D\xD8\x00\xDE"s, UTF16}, 2}, {{"\x3D\xD8\x3D\xD8\x00\xDE\x00\xDE\x41"s, UTF16}, 4},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Len(row.text), row.length) << row.text.Bytes();
  }
}

TEST(Mid, EveryStartAndCountIsClippedToTheText) {
  const String text("a\u00E9\u6F22z");
  struct Row {
    std::int64_t start;
    std::int64_t count;
    const char* part;
  };
  const std::vector<Row> rows = {
      {2, 2, "\u00E9\u6F22"}, {4, 9, "z"},   {5, 1, ""},       {0, 1, "a"},
      {kMin, 1, "a"},         {2, kMin, ""}, {kMax, kMax, ""}, {3, kMax, "\u6F22z"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Mid(text, row.start, row.count), row.part) << row.start << " " << row.count;
  }
  EXPECT_EQ(Mid(text, 3), "\u6F22z");
  EXPECT_EQ(Left(text, -1), "");
  EXPECT_EQ(Right(text, 0), "");
  EXPECT_EQ(Right(text, kMax), text);
}

TEST(InStr, PositionsAreThoseOfTheOriginalText) {
  struct Row {
    const char* what;
    std::int64_t start;
    String haystack;
    String needle;
    std::int64_t position;
  };
  const std::vector<Row> rows = {
      {"empty needle", 1, "abc", "", 0},
      {"start far behind", kMax, "abab", "ab", 0},
      {"form of another size before", 1, "\u212A\u017F\u1E9Ez", "Z", 4},
      {"form of another size matched", 2, "\u212Ax\u212A", "K", 3},
      {"sharp s is no two letters", 1, "Strasse", "\u00DF", 0},
      {"needle that overlaps itself", 1, "ééxéééxéééé", "ÉÉxÉÉÉÉ", 5},
      {"start of a character", 1, "\u6F22", {"\xE6\xBC", UTF8}, 0},
      {"invalid byte in Mac Roman", 1, {"\x8E", MacRoman}, {"\x8E", UTF8}, 0},
      {"Mac Roman in UTF-8", 1, "x\u00E9", {"\x83", MacRoman}, 2},
      {"UTF-8 in Mac Roman", 1, {"\xD0\xD8", MacRoman}, "\u0178", 2},
      {"UTF-8 in UTF-16", 1, {"\x3D\xD8\x00\xDE\xE9\0"s, UTF16}, "\u00C9", 2},
      {"no encoding in UTF-8", 1, "x\u00E9", {"\xC3\xA9", None}, 2},
      {"no encoding, not inside a character", 1, "x\u00E9", {"\xA9", None}, 0},
      {"UTF-8 in no encoding", 1, {"\xC3\xA9x\xC3\xA9", None}, "x\u00E9", 3},
      {"no encoding has no accents", 1, {"\xC3\xA9", None}, "\u00C9", 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(InStr(row.start, row.haystack, row.needle), row.position) << row.what;
  }
}

TEST(InStr, FindsAMatchWhereverABlockOfTheTextEnds) {
  for (std::int64_t i = 0; i < 1100; ++i) {
    const String filler(std::string(static_cast<std::size_t>(i), 'x'), UTF8);
    EXPECT_EQ(InStr(filler + "Needle", "needle"), i + 1);
    EXPECT_EQ(InStr(filler + "a\u212Ax", "AK"), i + 1);
    EXPECT_EQ(InStr(filler + "\u017F", "s"), i + 1);
  }
}

TEST(InStrB, CountsBytesAndLetterCase) {
  EXPECT_EQ(InStrB(1, "\u00E9aA", "A"), 4);
  EXPECT_EQ(InStrB(4, "\u00E9aA", "A"), 4);
  EXPECT_EQ(InStrB(5, "\u00E9aA", "A"), 0);
  EXPECT_EQ(InStrB(kMin, "A", "A"), 1);
  EXPECT_EQ(InStrB(kMax, "A", "A"), 0);
  EXPECT_EQ(InStrB(1, "A", ""), 0);
}

TEST(Fields, AreCutAtEachSeparatorFromTheLeft) {
  struct Row {
    String text;
    String separator;
    std::vector<String> fields;
  };
  const std::vector<Row> rows = {
      {"a,b,", ",", {"a", "b", ""}},
      {"aaa", "aa", {"", "a"}},
      {"a$|b$|~c", "$|~", {"a$|b", "c"}},
      {"$$|~a", "$|~", {"$", "a"}},
      {"1x2X3", "x", {"1", "2", "3"}},
      {"1\u00E92\u00C93", "\u00C9", {"1", "2", "3"}},
      {"1k2\u212A3K4", "k", {"1", "2", "3", "4"}},
      {"a,b", "", {"a,b"}},
      {{"\xFF|#|\xC3\xA9|#|\xC3|#|", UTF8}, "|#|", {"\xFF", "\xC3\xA9", "\xC3", ""}},
      {{"1\x8E\x32\x83\x33", MacRoman}, "\u00E9", {"1", "2", "3"}},
      {{"1\x8E\x32", MacRoman}, "\u6F22", {"1\x8E\x32"}},
      {{"1\xC3\xA9\x32\xC3\x89", None}, "\u00E9", {"1", "2\xC3\x89"}},
      {{"1\0,\0002\0"s, UTF16}, ",", {{"1\0"s, UTF16}, {"2\0"s, UTF16}}},
  };
  for (const auto& row : rows) {
    const auto count = static_cast<std::int64_t>(row.fields.size());
    EXPECT_EQ(CountFields(row.text, row.separator), count) << row.text.Bytes();
    const Array<String> split = Split(row.text, row.separator);
    ASSERT_EQ(split.Count(), count) << row.text.Bytes();
    for (std::int64_t i = 0; i < count; ++i) {
      EXPECT_EQ(split(i), row.fields[static_cast<std::size_t>(i)]) << row.text.Bytes();
      EXPECT_EQ(NthField(row.text, row.separator, i + 1), split(i)) << row.text.Bytes();
      EXPECT_EQ(split(i).DeclaredEncoding(), row.text.DeclaredEncoding());
    }
    EXPECT_EQ(NthField(row.text, row.separator, 0), "");
    EXPECT_EQ(NthField(row.text, row.separator, count + 1), "");
  }
}

TEST(Fields, OfTheEmptyTextAreOneButSplitGivesNone) {
  EXPECT_EQ(CountFields("", ","), 1);
  EXPECT_EQ(Split("", ",").Count(), 0);
  EXPECT_EQ(Split("", "").Count(), 0);
}

TEST(Asc, IsTheByteWhereACharacterIsOne) {
  EXPECT_EQ(Asc(""), 0);
  EXPECT_EQ(Asc("\u6F22x"), 0x6F22);
  EXPECT_EQ(Asc({"\xFF", UTF8}), 0xFF);
  EXPECT_EQ(Asc({"\x8E", MacRoman}), 0x8E);
  EXPECT_EQ(Asc({"\x8E", None}), 0x8E);
}

TEST(Chr, IsEmptyForWhatIsNoCharacter) {
  EXPECT_EQ(Chr(0).Size(), 1U);
  EXPECT_EQ(Chr(0x10FFFF), "\U0010FFFF");
  for (const std::uint32_t code : {0xD800U, 0x110000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(Chr(code), "");
  }
}

TEST(LetterCase, MapsWhatTheEncodingHolds) {
  EXPECT_EQ(Uppercase({"a\u00E9\xFF", UTF8}), (String("A\u00C9\xFF", UTF8)));
  EXPECT_EQ(Lowercase("A\u00C9\u212A"), "a\u00E9k");
  EXPECT_EQ(Uppercase({"a\x8E\xB5\xD8", MacRoman}).Bytes(), "A\x83\xB5\xD9");
  EXPECT_EQ(Uppercase({"a\xC3\xA9", None}).Bytes(), "A\xC3\xA9");
  EXPECT_EQ(Lowercase({"\x41\0\x01\xD8\x00\xDC\x01\xD8"s, UTF16}).Bytes(),
            "\x61\0\x01\xD8\x28\xDC\x01\xD8"s);
}

TEST(StrComp, Mode0ComparesBytesAndMode1Characters) {
  struct Row {
    String a;
    String b;
    int bytes;
    int characters;
  };
  const std::vector<Row> rows = {
      {"a", "A", 1, 0},
      {"ab", "a", 1, 1},
      {"\u00E9", "\u00C9", 1, 0},
      {"\u00E9", {"\x83", MacRoman}, 1, 0},
      {{"\x8E", MacRoman}, {"\x8E", UTF8}, 0, -1},
      {{"\xC3\xA9", None}, "\u00E9", 0, 0},
      {{"\xC3\xA9", None}, {"\xC3\x89", None}, 1, 1},
      {{"\xFF", UTF8}, {"\xFE", UTF8}, 1, 1},
      {"k", "\u212A", -1, 0},
      {"\u0130", "i", 1, 1},
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
