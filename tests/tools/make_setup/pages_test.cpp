#include "tools/make_setup/pages.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/make_setup/trees.h"
#include "tools/make_setup/record_writer.h"

namespace zephin::make_setup {
namespace {

TEST(MakePage, IsStoredInTheShortestPossibleFormOrRefused) {
  struct Row {
    std::string utf8;
    PageForm form;
    std::string stored;
    std::string refusedFor = {};
    PageKind kind = PageKind::Plain;
  };
  using enum PageForm;
  const std::string noMacRoman = "can't be stored in Mac Roman";
  const std::vector<Row> rows{
      {"", Hex, ""},
      {"Caf\u00E9 \u201Cx\u201D", Shortest, "Caf\x8E \xD2x\xD3"},
      {"a\nb\r\nc\rd\n", MacRoman, "a|b|c|d|"},
      {"AB", Hex, "$HTML$41004200"},
      {"\u044F\n", Shortest, "$HTML$4F040A00"},
      {"\U0001F600", Shortest, "$HTML$3DD800DE"},
      {"a|", Shortest, "$HTML$61007C00"},
      {"a\r\n#", Shortest, "$HTML$61000A002300"},
      {"#a\n##\n #", Shortest, "#a|##| #"},
      {"$html$", Shortest, "$HTML$2400680074006D006C002400"},
      {"see <hTmL> here", Hex, "", "must not contain \"<html>\""},
      {"<html lang=\"en\">", Shortest, "", "must contain \"<html>\"", PageKind::Html},
      {"\xC3", Shortest, "", "must be UTF-8"},
      {std::string("a\0b", 3), Hex, "", "zero character"},
      {"\u044F", MacRoman, "", noMacRoman},
      {"a|b", MacRoman, "", noMacRoman},
      {"a\n#\nb", MacRoman, "", noMacRoman},
      {"$Html$", MacRoman, "", noMacRoman},
  };
  for (const Row& row : rows) {
    std::string stored;
    const std::string refusal =
        Refusal([&] { stored = StoredPage(MakePage(row.utf8, row.kind, row.form)); });
    EXPECT_EQ(stored, row.stored) << row.utf8 << refusal;
    EXPECT_EQ(refusal.empty(), row.refusedFor.empty()) << row.utf8 << refusal;
    EXPECT_NE(refusal.find(row.refusedFor), std::string::npos) << row.utf8 << refusal;
  }
}

}  // namespace
}  // namespace zephin::make_setup
