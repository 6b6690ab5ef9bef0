#include "tools/make_setup/page_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

TEST(PageText, IsHeldInTheFormThatFits) {
  struct Row {
    std::string utf8;
    PageForm form;
    std::string expected;
  };
  const std::vector<Row> rows{
      {"", PageForm::Hex, ""},
      {"Caf\u00E9 \u201Cx\u201D", PageForm::Fitting, "Caf\x8E \xD2x\xD3"},
      {"a\nb\r\nc\rd\n", PageForm::MacRoman, "a|b|c|d|"},
      {"AB", PageForm::Hex, "$HTML$41004200"},
      {"\u044F\n", PageForm::Fitting, "$HTML$4F040A00"},
      {"\U0001F600", PageForm::Fitting, "$HTML$3DD800DE"},
      {"a|", PageForm::Fitting, "$HTML$61007C00"},
      {"#", PageForm::Fitting, "$HTML$2300"},
      {"a\r\n#", PageForm::Fitting, "$HTML$61000A002300"},
      {"#a\n##\n #", PageForm::Fitting, "#a|##| #"},
      {"$html$", PageForm::Fitting, "$HTML$2400680074006D006C002400"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(PageText(row.utf8, PageKind::Plain, row.form), row.expected) << row.utf8;
  }
}

TEST(PageText, WhatNoFormCanHoldOrWouldBeShownOtherwiseIsRefused) {
  struct Row {
    std::string utf8;
    PageKind kind;
    PageForm form;
    const char* reason;
  };
  const std::vector<Row> rows{
      {"see <hTmL> here", PageKind::Plain, PageForm::Hex, "would be shown as HTML"},
      {"<p>none</p>", PageKind::Html, PageForm::Fitting, "would be shown as plain text"},
      {"<html lang=\"en\">", PageKind::Html, PageForm::Fitting, "would be shown as plain text"},
      {"\xC3", PageKind::Plain, PageForm::Fitting, "not valid UTF-8"},
      {std::string("a\0b", 3), PageKind::Plain, PageForm::Hex, "zero character"},
      {"\u044F", PageKind::Plain, PageForm::MacRoman, "Mac Roman doesn't have"},
      {"a|b", PageKind::Plain, PageForm::MacRoman, "would become a line end"},
      {"a\n#\nb", PageKind::Plain, PageForm::MacRoman, "the record's separator"},
      {"$Html$", PageKind::Plain, PageForm::MacRoman, "the mark of the other form"},
  };
  for (const Row& row : rows) {
    const std::string refusal = Refusal([&] { (void)PageText(row.utf8, row.kind, row.form); });
    EXPECT_NE(refusal.find(row.reason), std::string::npos) << row.utf8 << ": " << refusal;
  }
}

}  // namespace
}  // namespace zephin::make_setup
