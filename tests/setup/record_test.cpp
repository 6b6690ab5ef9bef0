#include "setup/record.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "setup/bundle_files.h"
#include "setup/captions.h"
#include "setup/requirements.h"
#include "tests/support/scratch_folder.h"
#include "tools/make_setup/record_writer.h"

namespace zephin::test {
namespace {

const std::filesystem::path kSource = ZEPHIN_SOURCE_DIR;

/// The files of golden_record.hex by their names.
std::map<std::string, std::string> GoldenRecord() {
  std::map<std::string, std::string> files;
  std::istringstream lines(ReadFile(kSource / "tests/setup/golden_record.hex"));
  std::string* file = nullptr;
  for (std::string line; std::getline(lines, line);) {
    line = line.substr(0, line.find('#'));
    if (line.starts_with('[')) {
      file = &files[line.substr(1, line.find(']') - 1)];
    }
    std::istringstream digits(line.starts_with('[') ? "" : line);
    for (std::string byte; digits >> byte;) {
      *file += static_cast<char>(std::stoi(byte, nullptr, 16));
    }
  }
  return files;
}

SetupRecord ReadGoldenRecord() {
  auto files = GoldenRecord();
  UnscrambleBytes(files["Data"], 0);
  return ReadRecord({files["Data"], Encoding::None}, Utf8(files["TextData"]));
}

TEST(GoldenRecord, IsReadIntoTheFields) {
  const SetupRecord record = ReadGoldenRecord();
  EXPECT_TRUE(record.fApplicationFolder && record.fCenterMessage);
  EXPECT_FALSE(record.fPromptToReplace || record.fInstallationPatch);
  EXPECT_EQ((std::vector{record.fLogoWidth, record.fLogoHeight, record.fPictureWidth,
                         record.fPictureHeight, record.fBackgroundWidth, record.fEncryptionLen}),
            (std::vector<std::int64_t>{2, 2, 3, 2, 0, 77}));
  const std::vector<std::pair<String, const char*>> rows{
      {record.fTimeStamp, "2026-11-23"},
      {record.fExecuteAfterName, "FixedPath//usr/bin/true"},
      {record.fLogoPixelStr, "F[8]0[14]F[2]"},
      {record.fPicturePixelStr, "0[36]"},
      {record.fExecuteBeforeName, "helper"},
      {record.fBackgroundPixelStr, ""},
      {record.fAgreement, "\u03A9A\u263A"},
      {record.fMessage, "Caf\u00E9|Line two"},
      {record.fURLActual, "www.example.com"},
      {record.fURLDisplayed, "Site"},
      {record.fInfo, "Caf\x8E\nOpen"},
      {record.fTargetFolder, "J\u00FCniper"},
      {record.fCopyright, "(c)"},
      {record.fWindowTitle, "Juniper Setup"},
      {record.fInstallChoices, "Small,small.zip,Data,Less|Full,full.zip,Data,"},
      {record.fInstallOptions, "Fonts,https://a.example/fonts.zip,Fonts,Tip"},
      {record.fMinOS, "MacOS10.9"},
      {record.fMinRAM, "1GB"},
      {record.fCompletionURL, "https://a.example/done"},
      {record.fPreInstallNotes, "<html>Hi</html>"},
      {record.fPostInstallNotes, ""},
      {record.fPostCopy, "a.cfg={UserAccount/a.cfg}|delete=/tmp/old"}};
  for (const auto& [field, text] : rows) {
    EXPECT_EQ(field.Bytes(), text);
  }
  ASSERT_EQ(record.fLabels.Count(), std::ssize(kCaptions));
  EXPECT_EQ(record.fLabels(IndexOf(Caption::Quit)).Bytes(), "Leave");
  EXPECT_EQ(record.fLabels(IndexOf(Caption::ReleaseNotesTitle)).Bytes(), "Neu \u00E4");
}

TEST(GoldenRecord, IsWrittenByMakeSetup) {
  const ScratchFolder scratch;
  make_setup::WriteRecord(ReadGoldenRecord(), scratch.Path());
  EXPECT_EQ(Tree(scratch.Path()), GoldenRecord());
}

TEST(Documents, NameEveryCaptionKeywordAndField) {
  for (const char* page : {"docs/publishing.md", "tools/make_setup/README.md"}) {
    const std::string text = ReadFile(kSource / page);
    const auto expectNamed = [&](const std::string& name) {
      EXPECT_NE(text.find("`" + name + "`"), std::string::npos) << page << ": " << name;
    };
    for (const CaptionRow& row : kCaptions) {
      if (*row.name != '\0') {
        expectNamed(row.name);
      }
    }
    for (const auto& positions :
         {std::vector<Position>(kDataPositions.begin(), kDataPositions.end()),
          std::vector<Position>(kTextDataPositions.begin(), kTextDataPositions.end())}) {
      for (const Position& position : positions) {
        if (*position.field != '\0') {
          expectNamed(position.field);
        }
      }
    }
    for (const Requirement& requirement : kMemoryRequirements) {
      expectNamed(requirement.keyword);
    }
    expectNamed(kSystemRequirements.front().keyword);
    expectNamed(kSystemRequirements.back().keyword);
  }
}

TEST(Documents, ListEachCaptionWithIndexNameAndWording) {
  // The rows of the table: "| index | wording | name |", at times two or three of them in one.
  std::istringstream lines(ReadFile(kSource / "docs/publishing.md"));
  std::map<std::string, std::string> rowOf;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("| ") && std::isdigit(static_cast<unsigned char>(line[2])) != 0) {
      std::istringstream indexes(line.substr(2, line.find('|', 2) - 2));
      for (std::string index; std::getline(indexes, index, ',');) {
        rowOf[std::to_string(std::stoi(index))] = line;
      }
    }
  }
  for (const CaptionRow& row : kCaptions) {
    const std::string index = std::to_string(IndexOf(row.caption));
    if (*row.name == '\0') {
      EXPECT_FALSE(rowOf.contains(index)) << index;
      continue;
    }
    const std::string& line = rowOf[index];
    EXPECT_NE(line.find(std::string("`") + row.name + "`"), std::string::npos) << row.name;
    if (*row.wording != '\0') {
      EXPECT_NE(line.find(std::string("\"") + row.wording + "\""), std::string::npos) << row.name;
    }
  }
}

}  // namespace
}  // namespace zephin::test
