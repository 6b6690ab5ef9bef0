#include <gtest/gtest.h>

#include "setup/scrambling_bytes.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

class ReadData : public testing::Test {
 protected:
  /// Reads a record of these two texts, `data` in its plain form.
  bool Read(std::string data, const std::string& textData) {
    ScrambleBytes(data, 0);
    WriteFile(run.Resources() / "Data", data);
    WriteFile(run.Resources() / "TextData", textData);
    return window.ReadData();
  }
  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
};

std::string LabelsOf(const ZephinStubWindow& window) {
  std::string labels;
  for (const String& label : window.fLabels) {
    labels += "[" + label.Bytes() + "]";
  }
  return labels;
}

TEST_F(ReadData, EachPositionGoesToItsField) {
  ASSERT_TRUE(
      Read("1d$|~1$|~3d$|~A,40,41$|~5d$|~B,60,61$|~1$|~8d$|~C,90,91$|~-100.9$|~1$|~12d",
           "1|t|#|2|t|#|3t|#|4t|#|5|t|#|L0||L2|#|7t|#|8t|#|9t|#|10t|#|11t|#|12t|#|1|#|14|#|15|#|16"
           "|#|17|#|18|#|19|#|20|#|21|#|22,|t|#|23t|#|24t|#|25t|#|26t|#|27t|#|28t|#|29|t|#|30"));
  const std::pair<String, const char*> texts[] = {
      {window.fTimeStamp, "1d"},
      {window.fExecuteAfterName, "3d"},
      {window.fLogoPixelStr, "A"},
      {window.fPicturePixelStr, "B"},
      {window.fExecuteBeforeName, "8d"},
      {window.fBackgroundPixelStr, "C"},
      {window.fAgreement, "1\nt"},
      {window.fMessage, "2|t"},
      {window.fURLActual, "3t"},
      {window.fURLDisplayed, "4t"},
      {window.fInfo, "5\nt"},
      {window.fTargetFolder, "7t"},
      {window.fCopyright, "8t"},
      {window.fWindowTitle, "9t"},
      {window.fInstallChoices, "22,|t"},
      {window.fInstallOptions, "23t"},
      {window.fMinOS, "24t"},
      {window.fMinRAM, "25t"},
      {window.fCompletionURL, "26t"},
      {window.fPreInstallNotes, "27t"},
      {window.fPostInstallNotes, "28t"},
      {window.fPostCopy, "29|t"},
  };
  for (const auto& [field, value] : texts) {
    EXPECT_EQ(field.Bytes(), value);
  }
  const std::pair<std::int64_t, std::int64_t> numbers[] = {
      {window.fLogoWidth, 40},       {window.fLogoHeight, 41},      {window.fPictureWidth, 60},
      {window.fPictureHeight, 61},   {window.fBackgroundWidth, 90}, {window.fBackgroundHeight, 91},
      {window.fEncryptionLen, -100},
  };
  for (const auto& [field, value] : numbers) {
    EXPECT_EQ(field, value);
  }
  EXPECT_TRUE(window.fApplicationFolder && window.fPromptToReplace && window.fCenterMessage &&
              window.fInstallationPatch);
  EXPECT_EQ(LabelsOf(window), "[L0][][L2]");
}

TEST_F(ReadData, MissingPositionsAreEmptyAndBadNumbersAreWhatTheyBeginWith) {
  ASSERT_TRUE(Read("stamp$|~1$|~$|~FFF$|~$|~x,12px,$|~$|~$|~$|~0x10", "page|#|"));
  EXPECT_EQ(window.fLogoPixelStr.Bytes(), "FFF");
  EXPECT_EQ(window.fLogoWidth, 0);
  EXPECT_EQ(window.fPictureWidth, 12);
  EXPECT_EQ(window.fPictureHeight, 0);
  EXPECT_EQ(window.fEncryptionLen, 0);
  EXPECT_FALSE(window.fCenterMessage);
  EXPECT_EQ(window.fAgreement.Bytes(), "page");
  EXPECT_EQ(window.fLabels.Count(), 0);
  EXPECT_TRUE(window.fPostCopy.IsEmpty());
  EXPECT_THROW((void)window.fLabels(0), OutOfBoundsException);
}

TEST_F(ReadData, AFlagIsTrueOnlyForExactlyOne) {
  for (const char* flag : {"1", "0", "", " 1", "1 ", "11", "true", "\xEF\xBC\x91"}) {
    ASSERT_TRUE(Read(std::string("$|~") + flag, ""));
    EXPECT_EQ(window.fApplicationFolder, std::string(flag) == "1") << flag;
  }
}

TEST_F(ReadData, BytesThatAreNoTextAreKept) {
  ASSERT_TRUE(Read("\xFF\xFE$|~0$|~\x80$|~", "\x8E\xFF|#|m\xE9|\xC3|#||#||#||#|\xC3|\xA9|#|T\xF0"));
  EXPECT_EQ(window.fTimeStamp.Bytes(), "\xFF\xFE");
  EXPECT_EQ(window.fExecuteAfterName.Bytes(), "\x80");
  EXPECT_EQ(window.fAgreement.Bytes(), "\x8E\xFF");
  EXPECT_EQ(window.fAgreement.DeclaredEncoding(), Encoding::MacRoman);
  EXPECT_EQ(window.fMessage.Bytes(), "m\xE9|\xC3");
  EXPECT_EQ(window.fMessage.DeclaredEncoding(), Encoding::UTF8);
  EXPECT_EQ(LabelsOf(window), "[\xC3][\xA9]");
  EXPECT_EQ(window.fTargetFolder.Bytes(), "T\xF0");
}

TEST_F(ReadData, NothingIsReadWithoutData) {
  WriteFile(run.Resources() / "TextData", "page|#|message");
  EXPECT_FALSE(window.ReadData());
  EXPECT_FALSE(Read("", "page|#|message"));
  EXPECT_TRUE(window.fMessage.IsEmpty());
  fs::remove(run.Resources() / "TextData");
  WriteFile(run.Resources() / "Data", "d");
  EXPECT_TRUE(window.ReadData());
  EXPECT_EQ(window.fTimeStamp.Bytes(), "d");
  EXPECT_EQ(window.fLabels.Count(), 0);
}

TEST_F(ReadData, FilesAndFolderMayBeAliases) {
  ASSERT_TRUE(Read("one", "|#|message"));
  fs::rename(run.Resources() / "Data", run.scratch / "real");
  fs::create_symlink(run.scratch / "real", run.Resources() / "Data");
  fs::rename(run.Resources(), run.scratch / "RealResources");
  fs::create_directory_symlink(run.scratch / "RealResources", run.Resources());
  window.fTimeStamp = "";
  EXPECT_TRUE(window.ReadData());
  EXPECT_EQ(window.fTimeStamp.Bytes(), "one");
}

TEST_F(ReadData, PagesAreMacRomanOrHexWithLineFeeds) {
  const struct {
    const char* text;
    std::string page;
    Encoding encoding;
  } rows[] = {
      {"", "", Encoding::MacRoman},
      {"a|b||", "a\nb\n\n", Encoding::MacRoman},
      {"caf\xC3\xA9|caf\x8E", "caf\xC3\xA9\ncaf\x8E", Encoding::MacRoman},
      {"<html>plain bytes", "<html>plain bytes", Encoding::MacRoman},
      {"$HTML$A903", "\u03A9", Encoding::UTF8},
      {"$html$41004", "A", Encoding::UTF8},
      {"$HTML$", "", Encoding::UTF8},
      // Six characters go from the start, wherever the marker stands.
      {"4100$HTML$4200", "\u74E6B", Encoding::UTF8},
      {"\u65E5\u672C\u8A9E\u65E5\u672C\u8A9E"
       "4100$HTML$00",
       "A\uE651t", Encoding::UTF8},
  };
  for (const auto& row : rows) {
    const String page = window.ReadPlainOrHtmlText(row.text);
    EXPECT_EQ(page.Bytes(), row.page) << row.text;
    EXPECT_EQ(page.DeclaredEncoding(), row.encoding) << row.text;
  }
}

}  // namespace
}  // namespace zephin::test
