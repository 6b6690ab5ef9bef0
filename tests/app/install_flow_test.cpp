#include <gtest/gtest.h>

#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

/// A complete run in which the user presses Install. The target is the Applications folder.
class InstallFlow : public testing::Test {
 protected:
  InstallFlow() {
    WriteFile(run.scratch / "payload/new", "n");
    run.SetPayload(run.scratch / "payload", "Tool");
    run.record.fTargetFolder = "Tool";
    run.record.fApplicationFolder = true;
  }
  /// The next page has these captions and is answered by `button`.
  void ExpectPage(const char* title, const char* words, const char* button) {
    run.desktop.ExpectWindow(title, [=](Window& window) {
      const char* accept = window.ControlByName("OKBtn").IsNil() ? "ContinueBtn" : "OKBtn";
      std::string captions;
      for (const char* name : {"QuitBtn", accept}) {
        const auto control = RefCast<PushButton>(window.ControlByName(name));
        captions += control->Visible() ? control->Caption().Bytes() + "," : "";
      }
      EXPECT_EQ(captions, words);
      ScriptedDesktop::Press(window, button);
    });
  }
  /// Starts the program and presses the button. Returns the exit status.
  int Press(const char* button = "InstallBtn") {
    run.desktop.InEventLoop([this, button] { run.desktop.PressInMain(button); });
    return run.Run();
  }

  StubRun run;
};

TEST_F(InstallFlow, PagesComeInOrderWithTheirOwnWords) {
  run.record.fPreInstallNotes = run.record.fAgreement = "plain";
  ExpectPage("Pre-Installation Notes", "Quit,OK,", "OKBtn");
  ExpectPage("License Agreement", "Quit,I Agree,", "QuitBtn");
  EXPECT_EQ(Press(), 0);
  ExpectPage("Pre-Installation Notes", "Quit,OK,", "QuitBtn");
  EXPECT_EQ(Press(), 0);
  EXPECT_TRUE(fs::is_empty(run.Applications()));

  run.record.fPreInstallNotes = run.record.fAgreement = run.record.fInfo = "<html>";
  ExpectPage("Pre-Installation Notes", "Quit,I Agree,", "ContinueBtn");
  ExpectPage("License Agreement", "Quit,I Agree,", "ContinueBtn");
  run.record.fPostInstallNotes = "plain";
  run.desktop.ExpectWindow("Release Notes", [this](Window& notes) {
    EXPECT_TRUE(fs::exists(run.Applications() / "Tool/new"));
    ScriptedDesktop::Press(notes, "OKBtn");
  });
  EXPECT_EQ(Press(), 0);
  ExpectPage("Information", "OK,", "ContinueBtn");
  EXPECT_EQ(Press("InfoBtn"), -1);

  run.record.fInfo = "";
  run.record.fLabels = Captions({{Caption::Quit, "Leave"},
                                 {Caption::Ok, "Fine"},
                                 {Caption::Accept, "Agreed"},
                                 {Caption::AgreementTitle, "Terms"}});
  ExpectPage("Pre-Installation Notes", "Leave,Fine,", "ContinueBtn");
  ExpectPage("Terms", "Leave,Agreed,", "QuitBtn");
  EXPECT_EQ(Press(), 0);
}

TEST_F(InstallFlow, LinkOpensTheAddressAndAddsAMissingScheme) {
  ZephinStubWindow& window = run.BareWindow();
  for (const char* address : {"www.example.com", "", "HTTP://b.example", "c.example/http"}) {
    window.fURLActual = address;
    EXPECT_FALSE(window.URLLabel()->MouseDown(*window.URLLabel(), 1, 1));
  }
  EXPECT_EQ(run.desktop.opened, (std::vector<std::string>{"http://www.example.com",
                                                          "HTTP://b.example", "c.example/http"}));
}

}  // namespace
}  // namespace zephin::test
