#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/framework/text.h"

namespace zephin {
namespace {

TEST(Fields, AreCutAtEachSeparatorFromTheLeft) {
  const struct {
    String text;
    String separator;
    std::vector<String> fields;
  } rows[] = {
      {"a", ",", {"a"}},
      {",", ",", {"", ""}},
      {"a,b,", ",", {"a", "b", ""}},
      {"aaa", "aa", {"", "a"}},
      {"a$|b$|~c", "$|~", {"a$|b", "c"}},
      {"$$|~a", "$|~", {"$", "a"}},
      {"1x2X3", "x", {"1", "2", "3"}},
      {"1\u00E92\u00C93", "\u00C9", {"1", "2", "3"}},
      {"1k2\u212A3K4", "k", {"1", "2", "3", "4"}},
      {"a,b", "", {"a,b"}},
      {"a", "abc", {"a"}},
      {{"\xFF|#|\xC3\xA9|#|\xC3|#|", Encoding::UTF8}, "|#|", {"\xFF", "\xC3\xA9", "\xC3", ""}},
      {{"1\x8E\x32\x83\x33", Encoding::MacRoman}, "\u00E9", {"1", "2", "3"}},
      {{"1\x8E\x32", Encoding::MacRoman}, "\u6F22", {"1\x8E\x32"}},
      {{"1\xC3\xA9\x32\xC3\x89", Encoding::None}, "\u00E9", {"1", "2\xC3\x89"}},
      {{std::string("1\0,\0002\0", 6), Encoding::UTF16},
       ",",
       {{std::string("1\0", 2), Encoding::UTF16}, {std::string("2\0", 2), Encoding::UTF16}}},
  };
  for (const auto& row : rows) {
    const auto count = static_cast<std::int64_t>(row.fields.size());
    EXPECT_EQ(CountFields(row.text, row.separator), count) << row.text.Bytes();
    const Array<String> split = Split(row.text, row.separator);
    ASSERT_EQ(split.Count(), count) << row.text.Bytes();
    for (std::int64_t i = 0; i < count; ++i) {
      const String& field = row.fields[static_cast<std::size_t>(i)];
      EXPECT_EQ(split(i), field) << row.text.Bytes();
      EXPECT_EQ(NthField(row.text, row.separator, i + 1), field) << row.text.Bytes();
      EXPECT_EQ(split(i).DeclaredEncoding(), row.text.DeclaredEncoding());
    }
    EXPECT_EQ(NthField(row.text, row.separator, 0), "");
    EXPECT_EQ(NthField(row.text, row.separator, count + 1), "");
  }
}

TEST(Fields, OfTheEmptyTextAreOneButSplitGivesNone) {
  EXPECT_EQ(CountFields("", ","), 1);
  EXPECT_EQ(NthField("", ",", 1), "");
  EXPECT_EQ(Split("", ",").Count(), 0);
  EXPECT_EQ(Split("", "").Count(), 0);
}

}  // namespace
}  // namespace zephin
