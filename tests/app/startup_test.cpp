#include <gtest/gtest.h>

#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "tools/make_setup/record_writer.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

/// The texts of the window and the names of its visible controls.
std::string Looks(const ZephinStubWindow& window) {
  std::string looks = window.Title().Bytes() + "," + window.MessageLabel()->Text().Bytes() + "," +
                      window.URLLabel()->Text().Bytes() + "," +
                      window.CopyrightLabel()->Text().Bytes();
  for (const auto& control : window.Controls()) {
    if (control->Visible()) {
      const auto button = RefCast<PushButton>(control);
      looks += " " + control->Name() + (button.IsNil() ? "" : "=" + button->Caption().Bytes());
    }
  }
  return looks;
}

class Startup : public testing::Test {
 protected:
  /// Returns the exit status, or -1 if the main window waits for the user. Its looks are then
  /// compared with `expected`.
  int Start(const std::string& expected = "") {
    if (!expected.empty()) {
      run.desktop.InEventLoop([&, this] {
        const auto& window = dynamic_cast<ZephinStubWindow&>(run.desktop.Main());
        EXPECT_EQ(Looks(window), expected);
        look(window);
      });
    }
    return run.Run();
  }
  std::function<void(const ZephinStubWindow&)> look = [](const auto&) {};
  StubRun run;
};

TEST_F(Startup, RecordConfiguresTheWindow) {
  EXPECT_EQ(Start("Install,,URL, QuitBtn=Quit InstallBtn=Install MessageLabel"), -1);
  // A link without an address.
  run.record.fURLDisplayed = "Site";
  EXPECT_EQ(Start("Install,,Site, QuitBtn=Quit InstallBtn=Install MessageLabel URLLabel"), -1);

  run.record.fWindowTitle = "Tool Setup";
  run.record.fLabels =
      Captions({{Caption::Quit, "Leave"}, {Caption::Install, "Go"}, {Caption::Info, "About"}});
  run.record.fInfo = "Info";
  run.record.fCopyright = "(c) <b>";
  run.record.fMessage = "Line|one";
  run.record.fCenterMessage = true;
  run.record.fPicturePixelStr = "F[12]";
  run.record.fPictureWidth = 1;
  run.record.fPictureHeight = 2;
  run.record.fLogoPixelStr = "0[18]";
  run.record.fLogoWidth = 3;
  run.record.fLogoHeight = 1;
  run.record.fBackgroundPixelStr = "123456";
  run.record.fBackgroundWidth = run.record.fBackgroundHeight = 1;
  run.record.fURLActual = "www.example.com";
  run.record.fURLDisplayed = "";
  look = [](const ZephinStubWindow& window) {
    EXPECT_EQ(window.MessageLabel()->Alignment(), TextAlign::Center);
    EXPECT_EQ(window.PictureCanvas()->Backdrop()->Height(), 2);
    EXPECT_EQ(window.PictureCanvas()->Backdrop()->Transparent(), 1);
    EXPECT_EQ(window.LogoCanvas()->Backdrop()->Width(), 3);
    EXPECT_EQ(window.LogoCanvas()->Backdrop()->Transparent(), 1);
    EXPECT_EQ(window.Backdrop()->Pixels()[0], 0xFF123456);
    EXPECT_EQ(window.Backdrop()->Transparent(), 0);
  };
  EXPECT_EQ(Start("Tool Setup,Line|one,www.example.com,(c) <b> QuitBtn=Leave InstallBtn=Go "
                  "MessageLabel URLLabel PictureCanvas LogoCanvas CopyrightLabel InfoBtn=About"),
            -1);
}

TEST_F(Startup, GatesAreCheckedInOrder) {
  run.record.fMinRAM = "32GB";
  run.desktop.ExpectMessage("32 GB RAM is required.");
  EXPECT_EQ(Start(), 0);
  fs::permissions(run.Applications(), fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  run.desktop.ExpectMessage(
      "Cannot Install\n\nAn Administrator account is required to run this installer.");
  EXPECT_EQ(Start(), 0);
  run.machine.temporaryFolder = run.Disk();
  run.desktop.ExpectMessage("Drag the installer out of the Downloads folder before running it.");
  EXPECT_EQ(Start(), 0);
  EXPECT_TRUE(run.desktop.failures.empty());
}

TEST_F(Startup, MissingCaptionsAreReportedAsAFailureOfTheProgram) {
  make_setup::WriteRecord(run.record, run.Resources());
  WriteFile(run.Resources() / "TextData", "|#||#||#||#||#|a|b|#|");
  EXPECT_EQ(run.RunAsItStands(), 0);
  EXPECT_EQ(run.desktop.failures, std::vector<std::string>{"OutOfBoundsException"});
}

TEST_F(Startup, OnlyAnUnusableBackdropDoesNotEndTheStart) {
  SetupRecord& record = run.record;
  for (std::int64_t* side :
       {&record.fBackgroundWidth, &record.fBackgroundHeight, &record.fPictureWidth,
        &record.fPictureHeight, &record.fLogoWidth, &record.fLogoHeight}) {
    *side = 2;
  }
  for (String* picture :
       {&record.fBackgroundPixelStr, &record.fPicturePixelStr, &record.fLogoPixelStr}) {
    *picture = "F[6]";
    run.desktop.failures.clear();
    run.desktop.ExpectWindow("Error Message", "Btn3");
    const bool goesOn = picture == &record.fBackgroundPixelStr;
    EXPECT_EQ(Start(), goesOn ? -1 : 0);
    EXPECT_EQ(run.desktop.failures.size(), goesOn ? 0U : 1U);
    *picture = "";
  }
}

}  // namespace
}  // namespace zephin::test
