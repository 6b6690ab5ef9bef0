#include "tools/make_setup/record.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

/// The positions that a reader who cuts from the left finds.
std::size_t Positions(const std::string& text, const std::string& separator) {
  std::size_t count = 1;
  for (std::size_t at = 0; (at = text.find(separator, at)) != std::string::npos; ++count) {
    at += separator.size();
  }
  return count;
}

TEST(Record, EachFieldStandsAtItsPosition) {
  // The outer fields in the order of their declaration, then the inner ones.
  const SetupRecord record{"stamp",   true,       "after",          "logo",
                           "picture", true,       "before",         "background",
                           77,        true,       "agree|ment",     "a | b",
                           "actual",  "shown",    "$HTML$41004200", {"zero", "", "two"},
                           "Tool",    "\xC2\xA9", "title",          true,
                           "choices", "options",  "MacOS10.9",      "1GB",
                           "done",    "pre",      "post|",          "copies"};
  EXPECT_EQ(OuterRecord(record),
            "stamp$|~1$|~after$|~logo$|~$|~picture$|~1$|~before$|~background$|~77$|~1$|~");
  EXPECT_EQ(InnerRecord(record),
            "agree|ment|#|a | b|#|actual|#|shown|#|$HTML$41004200|#|zero||two" +
                std::string(24, '|') +
                "|#|Tool|#|\xC2\xA9|#|title|#||#||#||#|1|#||#||#||#||#||#||#||#||#|choices|#|"
                "options|#|MacOS10.9|#|1GB|#|done|#|pre|#|post||#|copies");
}

TEST(Record, TextThatWouldMoveACutIsRefused) {
  struct Row {
    std::string SetupRecord::*field;
    std::string text;
    const char* refusedFor;  // Empty: the text is held.
  };
  const std::vector<Row> rows{{&SetupRecord::fMessage, "a|#|b", "fMessage"},
                              {&SetupRecord::fMessage, "a|#", "fMessage"},
                              {&SetupRecord::fPostCopy, "|#|", "fPostCopy"},
                              {&SetupRecord::fMessage, "#|a", ""},
                              {&SetupRecord::fMessage, "a|", ""},
                              {&SetupRecord::fMessage, "$|~", ""},
                              {&SetupRecord::fTimeStamp, "$|~", "fTimeStamp"},
                              {&SetupRecord::fTimeStamp, "|~$|", ""},
                              {&SetupRecord::fExecuteAfterName, "a$|~b", "fExecuteAfterName"}};
  for (const Row& row : rows) {
    SetupRecord record;
    record.*row.field = row.text;
    const std::string refusal = Refusal([&] {
      EXPECT_EQ(Positions(OuterRecord(record), "$|~"), 12) << row.text;
      EXPECT_EQ(Positions(InnerRecord(record), "|#|"), 29) << row.text;
    });
    EXPECT_EQ(refusal.substr(0, refusal.find(':')), row.refusedFor) << row.text;
  }
  SetupRecord record;
  record.fLabels = {"a", "b|c"};
  EXPECT_EQ(Refusal([&] { (void)InnerRecord(record); }), "fLabels: caption 1 holds a \"|\"");
}

TEST(WriteRecord, OuterFileIsScrambledAndInnerPlain) {
  const test::ScratchFolder folder;
  SetupRecord record;
  record.fTimeStamp = "ABC\xFF";
  WriteRecord(record, folder.Path());
  EXPECT_EQ(test::ReadFile(folder / "Data").substr(0, 4), std::string("ACC\0", 4));
  EXPECT_EQ(test::ReadFile(folder / "TextData"), InnerRecord(record));
}

}  // namespace
}  // namespace zephin::make_setup
