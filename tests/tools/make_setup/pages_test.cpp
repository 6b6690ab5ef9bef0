#include "tools/make_setup/pages.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

TEST(PageText, IsHeldInTheFormThatFitsOrRefused) {
  struct Row {
    std::string utf8;
    PageForm form;
    std::string held;
    std::string refusedFor = {};
    PageKind kind = PageKind::Plain;
  };
  using enum PageForm;
  const std::vector<Row> rows{
      {"", Hex, ""},
      {"Caf\u00E9 \u201Cx\u201D", Fitting, "Caf\x8E \xD2x\xD3"},
      {"a\nb\r\nc\rd\n", MacRoman, "a|b|c|d|"},
      {"AB", Hex, "$HTML$41004200"},
      {"\u044F\n", Fitting, "$HTML$4F040A00"},
      {"\U0001F600", Fitting, "$HTML$3DD800DE"},
      {"a|", Fitting, "$HTML$61007C00"},
      {"a\r\n#", Fitting, "$HTML$61000A002300"},
      {"#a\n##\n #", Fitting, "#a|##| #"},
      {"$html$", Fitting, "$HTML$2400680074006D006C002400"},
      {"see <hTmL> here", Hex, "", "would be shown as HTML"},
      {"<html lang=\"en\">", Fitting, "", "would be shown as plain text", PageKind::Html},
      {"\xC3", Fitting, "", "not valid UTF-8"},
      {std::string("a\0b", 3), Hex, "", "zero character"},
      {"\u044F", MacRoman, "", "Mac Roman doesn't have"},
      {"a|b", MacRoman, "", "would become a line end"},
      {"a\n#\nb", MacRoman, "", "the record's separator"},
      {"$Html$", MacRoman, "", "the mark of the other form"},
  };
  for (const Row& row : rows) {
    std::string held;
    const std::string refusal = Refusal([&] { held = PageText(row.utf8, row.kind, row.form); });
    EXPECT_EQ(held, row.held) << row.utf8 << refusal;
    EXPECT_EQ(refusal.empty(), row.refusedFor.empty()) << row.utf8 << refusal;
    EXPECT_NE(refusal.find(row.refusedFor), std::string::npos) << row.utf8 << refusal;
  }
}

}  // namespace
}  // namespace zephin::make_setup
