#include <gtest/gtest.h>

#include "platform/framework/text.h"
#include "tests/support/stub_run.h"
#include "util/globals.h"
#include "util/sleep.h"
#include "util/text_building.h"
#include "util/text_search.h"

namespace zephin::test {
namespace {

using ViewConst::FindField;
using ViewConst::LineEndingEncoding;
using ViewConst::ReplaceCh1WithCh2;

/// Texts need an application only where they let events run.
class TextFunctions : public testing::Test {
 protected:
  TextFunctions() { run.BareWindow(); }
  StubRun run;
};

TEST_F(TextFunctions, FindFieldGivesTheFirstMatchInAnyLetterCase) {
  const struct {
    const char* source;
    const char* value;
    std::int64_t index;
  } rows[] = {
      {"a,b", "B", 2}, {"a,b", "c", 0}, {"a,b,B", "b", 2}, {"a,,b", "", 2},
      {"", "", 1},     {"", "a", 0},    {"a,", "", 2},     {"\u00C9t\u00E9", "\u00E9T\u00C9", 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FindField(row.source, ",", row.value), row.index) << row.source << "/" << row.value;
  }
  EXPECT_FALSE(ViewConst::StrSame("a", "A"));
  EXPECT_FALSE(ViewConst::StrSame("a", Utf8(std::string("a\0", 2))));
}

TEST_F(TextFunctions, ReplaceSwapsSingleBytesByWayOfMacRoman) {
  const struct {
    String text;
    const char* ch1;
    String ch2;
    std::string result;
    Encoding encoding;
  } rows[] = {
      {"", "|", "x", "", Encoding::UTF8},
      {"a|b||", "|", Chr(10), "a\nb\n\n", Encoding::MacRoman},
      {"Aa", "a", "x", "xx", Encoding::MacRoman},
      {"a|b", "|", "xyz", "axb", Encoding::MacRoman},
      {"a|b", "a|", "x", "a|b", Encoding::MacRoman},
      {"a|b", "", "x", "a|b", Encoding::MacRoman},
      {"caf\u00E9|", "|", Chr(10), "caf\x8E\n", Encoding::MacRoman},
      {"\u65E5|", "|", Chr(10), "\u65E5\n", Encoding::UTF8},
      {{"caf\xC3\xA9|\x8E", Encoding::None}, "|", Chr(10), "caf\xC3\xA9\n\x8E", Encoding::MacRoman},
      {{std::string("a\0b|", 4), Encoding::None}, "|", "x", "a", Encoding::MacRoman},
      {"a|b|c", "|", Utf8(std::string(1, '\0')), "a", Encoding::MacRoman},
  };
  for (const auto& row : rows) {
    const String result = ReplaceCh1WithCh2(row.text, row.ch1, row.ch2);
    EXPECT_EQ(result.Bytes(), row.result);
    EXPECT_EQ(result.DeclaredEncoding(), row.encoding) << row.result;
  }
}

TEST_F(TextFunctions, LineEndingsStayAndTheTextIsMacRomanWhereItFits) {
  const String roman = LineEndingEncoding("caf\u00E9\r\n");
  EXPECT_EQ(roman.Bytes(), "caf\x8E\r\n");
  EXPECT_EQ(roman.DeclaredEncoding(), Encoding::MacRoman);
  const String other = LineEndingEncoding("\u65E5\u672C\r");
  EXPECT_EQ(other.Bytes(), "\u65E5\u672C\r");
  EXPECT_EQ(other.DeclaredEncoding(), Encoding::UTF8);
}

TEST_F(TextFunctions, FillStringOfNoOrFewerBytesIsEmpty) {
  for (const auto& [count, text] : {std::pair{-1, ""}, {0, ""}, {1, "A"}, {3, "AAA"}}) {
    EXPECT_EQ(ViewConst::FillString("Ab", count).Bytes(), text);
  }
}

TEST_F(TextFunctions, SleepLastsItsSecondsAndLetsEventsRun) {
  bool clicked = false;
  run.desktop.After(1900, [&clicked] { clicked = true; });
  ViewConst::Sleep(2);
  EXPECT_TRUE(clicked);
  EXPECT_GE(run.desktop.milliseconds, 2000);
  EXPECT_LT(run.desktop.milliseconds, 2050);
}

}  // namespace
}  // namespace zephin::test
