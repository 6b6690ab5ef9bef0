#include "platform/framework/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

// The fuzzers of the string library search, cut and convert any texts. Here is what they leave out:
// numbers far outside a text, letter cases, and one row for each rule that is easily broken.

namespace zephin {
namespace {

using namespace std::string_literals;
using enum Encoding;

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(Mid, EveryStartAndCountIsClippedToTheText) {
  const String text("a\u00E9\u6F22z");
  const std::vector<std::tuple<std::int64_t, std::int64_t, const char*>> rows = {
      {2, 2, "\u00E9\u6F22"}, {4, 9, "z"},   {5, 1, ""},       {0, 1, "a"},
      {kMin, 1, "a"},         {2, kMin, ""}, {kMax, kMax, ""}, {3, kMax, "\u6F22z"},
  };
  for (const auto& [start, count, part] : rows) {
    EXPECT_EQ(Mid(text, start, count), part) << start << " " << count;
  }
  EXPECT_EQ(Left(text, -1), "");
  EXPECT_EQ(Right(text, 0), "");
  EXPECT_EQ(Right(text, kMax), text);
}

TEST(InStr, PositionsAreThoseOfTheOriginalText) {
  const std::vector<std::tuple<std::int64_t, String, String, std::int64_t>> rows = {
      // start, haystack, needle, position
      {1, "abc", "", 0},
      {kMax, "abab", "ab", 0},
      {kMin, "abab", "AB", 1},
      {1, "\u212A\u017F\u1E9Ez", "Z", 4},
      {1, "Strasse", "\u00DF", 0},
      {1, {"\x8E", MacRoman}, {"\x8E", UTF8}, 0},
      {1, "x\u00E9", {"\x83", MacRoman}, 2},
      {1, "x\u00E9", {"\xC3\xA9", None}, 2},
      {1, {"\xC3\xA9x\xC3\xA9", None}, "x\u00E9", 3},
      {1, {"\xC3\xA9", None}, "\u00C9", 0},
  };
  for (const auto& [start, haystack, needle, position] : rows) {
    EXPECT_EQ(InStr(start, haystack, needle), position) << haystack.Bytes() << needle.Bytes();
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
  EXPECT_EQ(InStrB(4, "\u00E9aA", "A"), 4);
  EXPECT_EQ(InStrB(kMin, "A", "A"), 1);
  EXPECT_EQ(InStrB(kMax, "A", "A"), 0);
}

TEST(Fields, AreCutAtEachSeparatorFromTheLeft) {
  const std::vector<std::tuple<String, String, std::vector<String>>> rows = {
      {"", ",", {""}},
      {"a,b,", ",", {"a", "b", ""}},
      {"a,b", "", {"a,b"}},
      {"$$|~a", "$|~", {"$", "a"}},
      {"1\u00E92\u00C93", "\u00C9", {"1", "2", "3"}},
      {"1k2\u212A3K4", "k", {"1", "2", "3", "4"}},
      {{"\xFF|#|\xC3\xA9|#|\xC3|#|", UTF8}, "|#|", {"\xFF", "\xC3\xA9", "\xC3", ""}},
      {{"1\x8E\x32\x83\x33", MacRoman}, "\u00E9", {"1", "2", "3"}},
      {{"1\xC3\xA9\x32\xC3\x89", None}, "\u00E9", {"1", "2\xC3\x89"}},
  };
  for (const auto& [text, separator, fields] : rows) {
    SCOPED_TRACE(text.Bytes());
    const auto count = std::ssize(fields);
    EXPECT_EQ(CountFields(text, separator), count);
    const Array<String> split = Split(text, separator);
    // Cut in one go, the empty text has no field.
    ASSERT_EQ(split.Count(), text.IsEmpty() ? 0 : count);
    for (std::int64_t i = 0; i < split.Count(); ++i) {
      EXPECT_EQ(split(i), fields[static_cast<std::size_t>(i)]);
      EXPECT_EQ(NthField(text, separator, i + 1), split(i));
    }
    EXPECT_EQ(NthField(text, separator, 0), "");
    EXPECT_EQ(NthField(text, separator, count + 1), "");
  }
}

TEST(Asc, IsTheByteWhereACharacterIsOne) {
  EXPECT_EQ(Asc(""), 0);
  EXPECT_EQ(Asc("\u6F22x"), 0x6F22);
  EXPECT_EQ(Asc({"\xFF", UTF8}), 0xFF);
  EXPECT_EQ(Asc({"\x8E", MacRoman}), 0x8E);
  EXPECT_EQ(Asc({"\x8E", None}), 0x8E);
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
  const std::vector<std::tuple<String, String, int, int>> rows = {
      {"\u00E9", {"\x83", MacRoman}, 1, 0},
      {{"\x8E", MacRoman}, {"\x8E", UTF8}, 0, -1},
      {{"\xC3\xA9", None}, "\u00E9", 0, 0},
      {{"\xC3\xA9", None}, {"\xC3\x89", None}, 1, 1},
      {"k", "\u212A", -1, 0},
      {"\u0130", "i", 1, 1},
  };
  const auto sign = [](int value) { return (value > 0) - (value < 0); };
  for (const auto& [a, b, bytes, characters] : rows) {
    EXPECT_EQ(sign(StrComp(a, b, 0)), bytes) << a.Bytes();
    EXPECT_EQ(sign(StrComp(a, b, 1)), characters) << a.Bytes();
    EXPECT_EQ(TextEquals(a, b), characters == 0) << a.Bytes();
  }
}

}  // namespace
}  // namespace zephin
