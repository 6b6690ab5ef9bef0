#include "tools/make_setup/record.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

std::vector<std::string> Cut(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find(separator, start)) != std::string::npos;) {
    parts.push_back(text.substr(start, end - start));
    start = end + separator.size();
  }
  parts.push_back(text.substr(start));
  return parts;
}

TEST(Record, EachFieldStandsAtItsPosition) {
  const SetupRecord record{
      // The outer fields in the order of their declaration, then the inner ones.
      "stamp",   true,       "after",          "logo",
      "picture", true,       "before",         "background",
      77,        true,       "agree|ment",     "a | b",
      "actual",  "shown",    "$HTML$41004200", {"zero", "", "two"},
      "Tool",    "\xC2\xA9", "title",          true,
      "choices", "options",  "MacOS10.9",      "1GB",
      "done",    "pre",      "post|",          "copies"};
  const std::string outer = "stamp 1 after logo - picture 1 before background 77 1 -";
  const std::string inner =
      "agree|ment a_|_b actual shown $HTML$41004200 zero||two|||||||||||||||||||||||| Tool "
      "\xC2\xA9 "
      "title - - - 1 - - - - - - - - choices options MacOS10.9 1GB done pre post| copies";
  const auto plain = [](const std::vector<std::string>& parts) {
    std::string words;
    for (std::string part : parts) {
      std::replace(part.begin(), part.end(), ' ', '_');
      words += (words.empty() ? "" : " ") + (part.empty() ? "-" : part);
    }
    return words;
  };
  EXPECT_EQ(plain(Cut(OuterRecord(record), "$|~")), outer);
  EXPECT_EQ(plain(Cut(InnerRecord(record), "|#|")), inner);
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
      EXPECT_EQ(Cut(OuterRecord(record), "$|~").size(), 12) << row.text;
      EXPECT_EQ(Cut(InnerRecord(record), "|#|").size(), 29) << row.text;
    });
    EXPECT_EQ(refusal.substr(0, refusal.find(':')), row.refusedFor) << row.text;
  }
  SetupRecord record;
  record.fLabels = {"a", "b|c"};
  EXPECT_EQ(Refusal([&] { (void)InnerRecord(record); }), "fLabels: caption 1 holds a \"|\"");
}

TEST(WriteRecord, OuterFileIsScrambledAndAFullDiskIsTold) {
  const test::ScratchFolder folder;
  SetupRecord record;
  record.fTimeStamp = "ABC\xFF";
  WriteRecord(record, folder.Path());
  EXPECT_EQ(test::ReadFile(folder / "Data").substr(0, 4), std::string("ACC\0", 4));
  EXPECT_EQ(test::ReadFile(folder / "TextData"), InnerRecord(record));
  std::filesystem::remove(folder / "TextData");
  std::filesystem::create_symlink("/dev/full", folder / "TextData");
  const std::string refusal = Refusal([&] { WriteRecord(record, folder.Path()); });
  EXPECT_NE(refusal.find("TextData: can't be written: No space"), std::string::npos) << refusal;
}

}  // namespace
}  // namespace zephin::make_setup
