#include "tools/make_setup/record.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

using Parts = std::vector<std::string>;

Parts Cut(const std::string& text, const std::string& separator) {
  Parts parts;
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find(separator, start)) != std::string::npos;) {
    parts.push_back(text.substr(start, end - start));
    start = end + separator.size();
  }
  parts.push_back(text.substr(start));
  return parts;
}

SetupRecord FilledRecord() {
  SetupRecord record;
  record.fTimeStamp = "stamp";
  record.fApplicationFolder = true;
  record.fExecuteAfterName = "after";
  record.fLogoPixelStr = "F[6],1,1";
  record.fPicturePixelStr = "0[6],1,1";
  record.fPromptToReplace = true;
  record.fExecuteBeforeName = "before";
  record.fBackgroundPixelStr = "A[6],1,1";
  record.fEncryptionLen = 77;
  record.fAgreement = "agree|ment";
  record.fMessage = "a message | with bars";
  record.fURLActual = "http://actual";
  record.fURLDisplayed = "shown";
  record.fInfo = "$HTML$41004200";
  record.fLabels = {"zero", "", "two"};
  record.fTargetFolder = "Tool";
  record.fCopyright = "\xC2\xA9";
  record.fWindowTitle = "title";
  record.fInstallationPatch = true;
  record.fInstallChoices = "c,c.zip,f,";
  record.fInstallOptions = "o,o.zip,f,|p,p.zip,f,";
  record.fMinOS = "MacOS10.9";
  record.fMinRAM = "1GB";
  record.fCompletionURL = "http://done";
  record.fPreInstallNotes = "pre|#";
  record.fPostInstallNotes = "post|";
  record.fPostCopy = "delete=/tmp/x";
  return record;
}

TEST(Record, EachFieldStandsAtItsPosition) {
  SetupRecord record = FilledRecord();
  record.fPreInstallNotes = "pre";
  EXPECT_EQ(Cut(OuterRecord(record), "$|~"),
            (Parts{"stamp", "1", "after", "F[6],1,1", "", "0[6],1,1", "1", "before", "A[6],1,1",
                   "77", "0", ""}));
  Parts inner{"agree|ment",
              "a message | with bars",
              "http://actual",
              "shown",
              "$HTML$41004200",
              "zero||two" + std::string(24, '|'),
              "Tool",
              "\xC2\xA9",
              "title",
              "",
              "",
              "",
              "1"};
  inner.insert(inner.end(), 8, "");
  inner.insert(inner.end(), {"c,c.zip,f,", "o,o.zip,f,|p,p.zip,f,", "MacOS10.9", "1GB",
                             "http://done", "pre", "post|", "delete=/tmp/x"});
  EXPECT_EQ(Cut(InnerRecord(record), "|#|"), inner);
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
    Parts outer;
    Parts inner;
    const std::string refusal = Refusal([&] {
      outer = Cut(OuterRecord(record), "$|~");
      inner = Cut(InnerRecord(record), "|#|");
    });
    EXPECT_EQ(refusal.substr(0, refusal.find(':')), row.refusedFor) << row.text;
    if (refusal.empty()) {
      EXPECT_TRUE(outer.size() == 12 && inner.size() == 29) << row.text;
    }
  }
  SetupRecord record;
  record.fLabels = {"a", "b|c"};
  EXPECT_EQ(Refusal([&] { (void)InnerRecord(record); }), "fLabels: caption 1 holds a \"|\"");
}

TEST(Record, MoreCaptionsThanTheStubKnowsAreKept) {
  SetupRecord record;
  record.fLabels.resize(30);
  record.fLabels.back() = "last";
  EXPECT_EQ(Cut(Cut(InnerRecord(record), "|#|").at(5), "|").at(29), "last");
}

TEST(WriteRecord, OuterFileIsScrambledAndInnerPlain) {
  const TestFolder folder;
  SetupRecord record;
  record.fTimeStamp = "ABC\xFF";
  WriteRecord(record, folder.Path());
  EXPECT_EQ(ReadFile(folder / "Data").substr(0, 4), std::string("AC"
                                                                "C\0",
                                                                4));
  EXPECT_EQ(ReadFile(folder / "TextData"), InnerRecord(record));
}

TEST(WriteRecord, FullDiskIsToldWithTheFile) {
  const TestFolder folder;
  std::filesystem::create_symlink("/dev/full", folder / "TextData");
  const std::string refusal = Refusal([&] { WriteRecord(SetupRecord(), folder.Path()); });
  EXPECT_NE(refusal.find("TextData: can't be written: No space"), std::string::npos) << refusal;
}

}  // namespace
}  // namespace zephin::make_setup
