#include <gtest/gtest.h>

#include "setup/bundle_files.h"
#include "tests/support/limits.h"
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
    return w.ReadData();
  }
  template <class... Texts>
  static std::string Joined(const Texts&... texts) {
    return ((texts.Bytes() + " ") + ...);
  }
  std::vector<String> Labels() const { return {w.fLabels.begin(), w.fLabels.end()}; }

  StubRun run;
  ZephinStubWindow& w = run.BareWindow();
};

TEST_F(ReadData, MissingPositionsAreEmptyAndNumbersAreReadFromTheStart) {
  ASSERT_TRUE(Read("$|~11$|~$|~FFF$|~$|~x,12px,$|~ 1$|~$|~$|~-100.9", "page|#|"));
  EXPECT_EQ((std::vector{w.fLogoWidth, w.fPictureWidth, w.fPictureHeight, w.fEncryptionLen}),
            (std::vector<std::int64_t>{0, 12, 0, -100}));
  EXPECT_FALSE(w.fApplicationFolder || w.fPromptToReplace || w.fCenterMessage);
  EXPECT_EQ(w.fLogoPixelStr.Bytes() + w.fAgreement.Bytes(), "FFFpage");
  EXPECT_EQ(w.fLabels.Count(), 0);
}

TEST_F(ReadData, InvalidBytesAreKept) {
  ASSERT_TRUE(Read("\xFF\xFE$|~0$|~\x80$|~", "\x8E\xFF|#|m\xE9|\xC3|#||#||#||#|\xC3|\xA9|#|T\xF0"));
  EXPECT_EQ(Joined(w.fTimeStamp, w.fExecuteAfterName, w.fAgreement, w.fMessage, w.fTargetFolder),
            "\xFF\xFE \x80 \x8E\xFF m\xE9|\xC3 T\xF0 ");
  EXPECT_EQ(w.fMessage.DeclaredEncoding(), Encoding::UTF8);
  EXPECT_EQ(Labels(), (std::vector<String>{"\xC3", "\xA9"}));
}

TEST_F(ReadData, NothingIsReadWithoutDataAndAliasesAreFollowed) {
  EXPECT_FALSE(Read("", "|#|message"));
  EXPECT_TRUE(w.fMessage.IsEmpty());
  fs::remove(run.Resources() / "Data");
  EXPECT_FALSE(w.ReadData());
  WriteFile(run.scratch / "real", "stamp");
  fs::create_symlink(run.scratch / "real", run.Resources() / "Data");
  fs::rename(run.Resources(), run.scratch / "Elsewhere");
  fs::create_directory_symlink(run.scratch / "Elsewhere", run.Resources());
  EXPECT_TRUE(w.ReadData());
  EXPECT_EQ(w.fTimeStamp.Size(), 5U);
  EXPECT_EQ(w.fMessage.Bytes(), "message");
}

TEST_F(ReadData, UnreadableFileOfTheRecordRaises) {
  for (const char* name : {"Data", "TextData"}) {
    ASSERT_TRUE(Read("stamp", "message"));
    fs::permissions(run.Resources() / name, fs::perms::none);
    {
      const PlainUser user(run.scratch.Path());
      EXPECT_THROW((void)w.ReadData(), NilObjectException) << name;
    }
    fs::permissions(run.Resources() / name, fs::perms(0600));
  }
}

TEST_F(ReadData, PagesAreMacRomanOrHexWithLineFeeds) {
  const std::vector<std::tuple<const char*, const char*, Encoding>> rows{
      {"", "", Encoding::MacRoman},
      {"caf\x8E||", "caf\x8E\n\n", Encoding::MacRoman},
      // Two characters of Mac Roman, though they look like one of UTF-8.
      {"caf\xC3\xA9|", "caf\xC3\xA9\n", Encoding::MacRoman},
      {"$HTML$A903", "\u03A9", Encoding::UTF8},
      {"$html$41004", "A", Encoding::UTF8},
      // An incomplete or invalid unit does not invalidate the page.
      {"$HTML$410042", "A", Encoding::UTF8},
      {"$HTML$00D841003DD800DE00DC", "\uFFFDA\U0001F600\uFFFD", Encoding::UTF8},
      // The first six characters are dropped, wherever the marker is.
      {"4100$HTML$4200", "\u74E6B", Encoding::UTF8},
      {"\u65E5\u672C\u8A9E\u65E5\u672C\u8A9E4100$HTML$00", "A\uE651t", Encoding::UTF8},
  };
  for (const auto& [text, page, encoding] : rows) {
    EXPECT_EQ(w.ReadPlainOrHtmlText(text).Bytes(), page);
    EXPECT_EQ(w.ReadPlainOrHtmlText(text).DeclaredEncoding(), encoding) << text;
  }
}

}  // namespace
}  // namespace zephin::test
