#include "platform/framework/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

// The fuzzers search, split and convert arbitrary texts. These tests cover the rest: numbers far
// outside of a text, letter cases, and one row for each rule that is easily broken.

namespace zephin {
namespace {

using namespace std::string_literals;
using enum Encoding;

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(Mid, ClipsStartAndCountToTheText) {
  const String text("a\u00E9\u6F22z");
  const std::vector<std::tuple<std::int64_t, std::int64_t, const char*>> rows = {
      {2, 2, "\u00E9\u6F22"}, {4, 9, "z"},   {5, 1, ""},       {0, 1, "a"},
      {kMin, 1, "a"},         {2, kMin, ""}, {kMax, kMax, ""}, {3, kMax, "\u6F22z"},
  };
  for (const auto& [start, count, part] : rows) {
    EXPECT_EQ(Mid(text, start, count), part) << start << " " << count;
  }
  EXPECT_EQ(Left(text, -1), "");
  EXPECT_EQ(Right(text, kMax), text);
  EXPECT_EQ(Right(text, 2), "\u6F22z");
}

TEST(InStr, ReturnsPositionsInTheOriginalText) {
  const std::vector<std::tuple<std::int64_t, String, String, std::int64_t>> rows = {
      // start, haystack, needle, position
      {kMax, "abab", "ab", 0},
      {kMin, "abab", "AB", 1},
      {1, "\u212A\u017F\u1E9Ez", "Z", 4},
      {1, "Strasse", "\u00DF", 0},
      {1, "ééxéééxéééé", "ÉÉxÉÉÉÉ", 5},  // It overlaps itself.
      {1, {"\x8E", MacRoman}, {"\x8E", UTF8}, 0},
      {1, {"\xC3\xA9x\xC3\xA9", None}, "x\u00E9", 3},
  };
  for (const auto& [start, haystack, needle, position] : rows) {
    EXPECT_EQ(InStr(start, haystack, needle), position) << haystack.Bytes() << needle.Bytes();
  }
}

TEST(InStr, FindsMatchesAcrossBlockBoundaries) {
  for (std::int64_t i = 0; i < 1100; ++i) {
    const String filler(std::string(static_cast<std::size_t>(i), 'x'), UTF8);
    EXPECT_EQ(InStr(filler + "Needle", "needle"), i + 1);
    EXPECT_EQ(InStr(filler + "a\u212Ax", "AK"), i + 1);
    EXPECT_EQ(InStr(filler + "\u017F", "s"), i + 1);
  }
}

TEST(Fields, AreSplitAtEachSeparatorFromTheLeft) {
  const std::vector<std::tuple<String, String, const char*>> rows = {
      // The fields, each followed by a slash.
      {"", ",", "/"},
      {"a,b,", ",", "a/b//"},
      {"a,b", "", "a,b/"},
      {"$$|~a", "$|~", "$/a/"},
      {"1k2\u212A3K4", "k", "1/2/3/4/"},
      {{"\xFF|#|\xC3\xA9|#|\xC3|#|", UTF8}, "|#|", "\xFF/\xC3\xA9/\xC3//"},
      {{"1\x8E\x32\x83\x33", MacRoman}, "\u00E9", "1/2/3/"},
      {{"1\xC3\xA9\x32\xC3\x89", None}, "\u00E9", "1/2\xC3\x89/"},
  };
  for (const auto& [text, separator, expected] : rows) {
    std::string fields;
    const std::int64_t count = CountFields(text, separator);
    for (std::int64_t i = 1; i <= count; ++i) {
      fields += NthField(text, separator, i).Bytes() + "/";
    }
    EXPECT_EQ(fields, expected);
    EXPECT_EQ(NthField(text, separator, 0), "") << expected;
    std::string split;
    for (const String& field : Split(text, separator)) {
      split += field.Bytes() + "/";
    }
    // Split returns no field for an empty text.
    EXPECT_EQ(split, text.IsEmpty() ? "" : expected);
  }
}

TEST(Asc, ReturnsTheByteOfASingleByteCharacter) {
  EXPECT_EQ(Asc(""), 0);
  EXPECT_EQ(Asc("\u6F22x"), 0x6F22);
  EXPECT_EQ(Asc({"\xFF", UTF8}), 0xFF);
  EXPECT_EQ(Asc({"\x8E", MacRoman}), 0x8E);
  EXPECT_EQ(Asc({"\x8E", None}), 0x8E);
}

TEST(LetterCase, ChangesOnlyToLettersOfTheEncoding) {
  EXPECT_EQ(Uppercase({"a\u00E9\xFF", UTF8}), (String("A\u00C9\xFF", UTF8)));
  EXPECT_EQ(Lowercase("A\u00C9\u212A"), "a\u00E9k");
  EXPECT_EQ(Uppercase({"a\x8E\xB5\xD8", MacRoman}).Bytes(), "A\x83\xB5\xD9");
  EXPECT_EQ(Uppercase({"a\xC3\xA9", None}).Bytes(), "A\xC3\xA9");
  EXPECT_EQ(Lowercase({"\x41\0\x01\xD8\x00\xDC\x01\xD8"s, UTF16}).Bytes(),
            "\x61\0\x01\xD8\x28\xDC\x01\xD8"s);
}

TEST(StrComp, Mode0ComparesBytesAndMode1Characters) {
  EXPECT_GT(StrComp("a", "A", 0), 0);
  EXPECT_EQ(StrComp("a", "A", 1), 0);
  EXPECT_LT(StrComp("k", "\u212A", 0), 0);
  EXPECT_EQ(StrComp("k", "\u212A", 1), 0);
  EXPECT_GT(StrComp("\u0130", "i", 1), 0);
  EXPECT_EQ(StrComp({"\xC3\xA9", None}, "\u00E9", 1), 0);
  EXPECT_FALSE(TextEquals({"\xC3\xA9", None}, {"\xC3\x89", None}));
}

TEST(Val, ReadsTheDecimalNumberAtTheStart) {
  const std::vector<std::pair<String, double>> rows = {
      {" \t\r\n-12.75x", -12.75},
      {"+.5", 0.5},
      {"1E+2e3", 100},
      {"1e+", 1},
      {{"1\0002"s, Encoding::None}, 1},
      {{" \0-\0001\0002\0\x32\x06"s, Encoding::UTF16}, -12},
  };
  for (const auto& [text, number] : rows) {
    EXPECT_EQ(Val(text), number) << text.Bytes();
  }
  for (const char* text :
       {"", ".", "-", "- 5", "--5", "e2", "0x10", "&h10", "inf", "nan", "-infinity", "\uFF11"}) {
    EXPECT_EQ(Val(text), 0) << text;
  }
}

TEST(Val, ClipsNumbersThatAreTooLarge) {
  const std::string zeros(400, '0');
  const std::vector<std::tuple<std::string, double, std::int64_t>> rows = {
      {"9223372036854775807", 9223372036854775808.0, kMax},
      {"9223372036854774784", 9223372036854774784.0, 9223372036854774784},
      {"-9223372036854775808", -9223372036854775808.0, kMin},
      {"1e400", kLargest, kMax},
      {"-1e400", -kLargest, kMin},
      {"1e+99999999999999999999", kLargest, kMax},
      {"0e99999999999999999999", 0, 0},
      {"." + zeros + "1e500", 1e99, kMax},
      {"1" + zeros + "e-399", 10, 10},
      {"-1.9" + std::string(4'000'000, '0'), -1.9, -1},
      {"1e" + std::string(4'000'000, '0') + "2", 100, 100},
  };
  for (const auto& [text, number, whole] : rows) {
    EXPECT_EQ(Val(Utf8(text)), number) << text;
    EXPECT_EQ(ValInteger(Utf8(text)), whole) << text;
  }
}

}  // namespace
}  // namespace zephin
