#include <gtest/gtest.h>

#include "dialogs/yes_no_dialog.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using Expected = std::map<std::string, std::string>;

const char* const kAborted =
    "Install Aborted\n\nUnable to delete existing installed folder.  Reboot the computer and try "
    "again or manually delete the previously installed application folder.";

/// A setup of one payload file that installs the folder "Tool".
class ExpandFolder : public testing::Test {
 protected:
  ExpandFolder() {
    WriteFile(run.scratch / "payload/new", "n");
    run.SetPayload(run.scratch / "payload", "Tool");
    fs::create_directory(chosen);
    window.fTargetFolder = "Tool";
  }
  /// Installs into the chosen folder.
  void Expand() {
    run.desktop.ExpectFolderDialog(chosen);
    window.ExpandFolder();
  }
  void ExpandIntoApplications() {
    window.fApplicationFolder = true;
    window.ExpandFolder();
  }
  void SetLabel(std::int64_t index, const char* text) {
    std::vector<String> labels(window.fLabels.begin(), window.fLabels.end());
    labels[static_cast<std::size_t>(index)] = text;
    window.fLabels = Array<String>(labels);
  }

  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  const fs::path chosen = run.scratch / "Chosen";
  const std::string zip = chosen / "Tool.zip";
  const Expected installed{{"Tool", "/"}, {"Tool/new", "n"}};
};

TEST_F(ExpandFolder, PutsThePayloadIntoTheChosenFolder) {
  window.InfoBtn()->SetVisible(true);
  WriteFile(zip, "left over");
  const std::string payload = ReadFile(run.Resources() / "Data2");
  bool plainAtLaunch = false;
  run.desktop.onLaunch = [&](const std::string& path) {
    plainAtLaunch = ReadFile(path).starts_with("PK");
    EXPECT_EQ(window.MessageLabel()->Text().Bytes(), "Install in Progress...");
    EXPECT_FALSE(window.ProgressBar1()->Visible());
  };

  Expand();

  EXPECT_EQ(Tree(chosen), installed);
  EXPECT_EQ(window.fTargetFolder.Bytes(), (chosen / "Tool").string());
  EXPECT_EQ(run.desktop.launched, std::vector<std::string>{zip});
  EXPECT_TRUE(plainAtLaunch);
  EXPECT_FALSE(window.InfoBtn()->Visible());
  EXPECT_EQ(ReadFile(run.Resources() / "Data2"), payload);
}

TEST_F(ExpandFolder, ApplicationsNeedNoQuestion) {
  ExpandIntoApplications();
  EXPECT_EQ(Tree(run.Applications()), installed);
  EXPECT_EQ(window.fTargetFolder.Bytes(), (run.Applications() / "Tool").string());
}

TEST_F(ExpandFolder, ReplacesAnExistingFolderAsTheUserSays) {
  window.fPromptToReplace = true;
  SetLabel(3, "No!");
  SetLabel(12, "Sure?");
  for (const char* button : {"CancelBtn", "OKBtn"}) {
    WriteFile(chosen / "Tool/old", "o");
    window.fTargetFolder = "Tool";
    window.MessageLabel()->SetText("Welcome");
    run.desktop.milliseconds = 0;
    run.desktop.ExpectFolderDialog(chosen);
    run.desktop.ExpectWindow("Confirmation", [this, button](Window& shown) {
      auto& dialog = dynamic_cast<YesNoDialog&>(shown);
      EXPECT_EQ(dialog.ConfirmLabel1()->Text().Bytes(), "Destination folder already exists.");
      EXPECT_EQ(dialog.ConfirmLabel2()->Text().Bytes(), "Sure?");
      EXPECT_EQ(dialog.ConfirmLabel3()->Text().Bytes(), (chosen / "Tool").string());
      EXPECT_EQ(dialog.CancelBtn()->Caption().Bytes(), "No!");
      EXPECT_EQ(dialog.OKBtn()->Caption().Bytes(), "OK");
      EXPECT_TRUE(dialog.OKBtn()->Default() && !dialog.CancelBtn()->Cancel());
      EXPECT_EQ(window.MessageLabel()->Text().Bytes(), "Welcome");
      ScriptedDesktop::Press(shown, button);
    });
    window.ExpandFolder();
    const bool agreed = button == std::string("OKBtn");
    EXPECT_EQ(Tree(chosen), agreed ? installed : (Expected{{"Tool", "/"}, {"Tool/old", "o"}}));
    EXPECT_EQ(window.fTargetFolder.Bytes(), (chosen / "Tool").string());
    // A second after the deletion, half a one for the bar and one after that of the archive.
    EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds), agreed ? 2550 : 0, 100);
  }
  EXPECT_EQ(run.desktop.launched.size(), 1U);
}

TEST_F(ExpandFolder, ReplacesWithoutAQuestionButNotAPlainFile) {
  WriteFile(chosen / "Tool/old", "o");
  Expand();
  EXPECT_EQ(Tree(chosen), installed);

  fs::remove_all(chosen / "Tool");
  WriteFile(chosen / "Tool", "a file");
  window.fTargetFolder = "Tool";
  Expand();
  EXPECT_EQ(ReadFile(chosen / "Tool"), "a file");
}

TEST_F(ExpandFolder, UndeletableFolderEndsTheInstallAfterFourSeconds) {
  WriteFile(run.Applications() / "Tool/old", "o");
  fs::permissions(run.Applications(), fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  run.desktop.ExpectMessage(kAborted);
  ExpandIntoApplications();
  EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds), 4000, 100);
  EXPECT_TRUE(run.desktop.launched.empty());
  EXPECT_EQ(window.fTargetFolder.Bytes(), (run.Applications() / "Tool").string());
  EXPECT_EQ(Tree(run.Applications()), (Expected{{"Tool", "/"}}));
}

TEST_F(ExpandFolder, FolderThatGoesAfterTwoSecondsIsReplaced) {
  WriteFile(run.Applications() / "Tool/old", "o");
  fs::permissions(run.Applications(), fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  run.desktop.After(2000, [this] {
    fs::permissions(run.Applications(), fs::perms(0755));
    fs::remove(run.Applications() / "Tool");
  });
  ExpandIntoApplications();
  EXPECT_EQ(Tree(run.Applications()), installed);
}

TEST_F(ExpandFolder, NameThatLeadsOutOfItsParentTouchesNothing) {
  WriteFile(chosen / "mine", "m");
  WriteFile(run.scratch / "x/mine", "m");
  window.fPromptToReplace = true;
  const Expected before = Tree(run.scratch.Path());
  for (const char* name : {"", ".", "..", "../x", "a/.."}) {
    window.fTargetFolder = name;
    run.desktop.ExpectFolderDialog(chosen);
    run.desktop.ExpectMessage(kAborted);
    window.ExpandFolder();
    EXPECT_EQ(Tree(run.scratch.Path()), before) << name;
    EXPECT_FALSE(window.fTargetFolder.IsEmpty()) << name;
  }
  EXPECT_EQ(run.desktop.milliseconds, 0);
}

TEST_F(ExpandFolder, ListBeforeTheInstallIsObeyedBeforeTheFolderIsAskedFor) {
  WriteFile(run.Home() / "old", "o");
  window.fPostCopy = Utf8("preinstalldelete=" + (run.Home() / "old").string());
  bool gone = false;
  run.desktop.onFolderDialog = [&](const SelectFolderDialog&) {
    gone = !fs::exists(run.Home() / "old");
  };
  run.desktop.ExpectFolderDialog("");
  window.ExpandFolder();
  EXPECT_TRUE(gone);
  EXPECT_TRUE(window.fTargetFolder.IsEmpty());
  EXPECT_TRUE(fs::is_empty(chosen));
  EXPECT_TRUE(run.desktop.launched.empty());
}

TEST_F(ExpandFolder, FailedCopyIsToldAndTheRestGoesOn) {
  WriteFile(run.Resources() / "after", "x");
  const struct {
    bool payload;
    std::size_t room;
  } rows[] = {{false, 1'000'000}, {true, 50}};
  for (const auto& row : rows) {
    if (!row.payload) {
      fs::rename(run.Resources() / "Data2", run.scratch / "Data2");
    } else {
      fs::rename(run.scratch / "Data2", run.Resources() / "Data2");
    }
    WriteFile(zip, "left over");
    run.desktop.launched.clear();
    run.desktop.milliseconds = 0;
    window.fTargetFolder = "Tool";
    window.fExecuteAfterName = "after";
    window.fPostCopy = "nothing=";
    run.desktop.ExpectFolderDialog(chosen);
    run.desktop.ExpectMessage("Installation Failed");
    run.desktop.ExpectMessage("Install Error\n\nContact Publisher");
    const FullDisk full(row.room);
    window.ExpandFolder();
    EXPECT_EQ(run.desktop.launched,
              (std::vector<std::string>{zip, (run.Resources() / "after").string()}));
    EXPECT_TRUE(fs::is_empty(chosen));
    EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds), 520, 20);
  }
}

TEST(ExpandFolderAlone, WithoutABundleThereIsNothingToCopy) {
  StubRun run;
  run.machine.executable = run.scratch / "Setup";
  run.BareWindow().fTargetFolder = "Tool";
  run.BareWindow().fApplicationFolder = true;
  run.desktop.ExpectMessage("Installation Failed");
  run.BareWindow().ExpandFolder();
  EXPECT_TRUE(fs::is_empty(run.Applications()));
}

TEST_F(ExpandFolder, AfterProgramIsLookedUpFirstAndStartedBeforeTheArchiveGoes) {
  WriteFile(run.Home() / "there", "x");
  WriteFile(run.Home() / "source", "x");
  const std::string home = run.Home();
  // Brought by the list before the install, and so too late.
  window.fPostCopy = Utf8("preinstallcopy=" + home + "/source;" + home + "/late");
  const struct {
    const char* name;
    std::string started;
  } rows[] = {
      {"after", run.Resources() / "after"},
      {"UserAccount/there", home + "/there"},
      {"UserAccount/late", ""},
      {"", ""},
  };
  for (const auto& row : rows) {
    std::vector<std::string> expected{zip};
    if (!row.started.empty()) {
      expected.push_back(row.started);
    }
    fs::remove(run.Home() / "late");
    run.desktop.launched.clear();
    run.desktop.onLaunch = [this](const std::string& path) {
      EXPECT_TRUE(fs::exists(zip)) << path;
    };
    window.fTargetFolder = "Tool";
    window.fExecuteAfterName = row.name;
    Expand();
    EXPECT_EQ(run.desktop.launched, expected) << row.name;
  }
}

TEST_F(ExpandFolder, RelocationLeavesTheRestToTheCopy) {
  WriteFile(run.Resources() / "Data#1", "piece");
  window.fPostCopy = Utf8("preinstalldelete=" + (run.scratch / "payload").string());
  window.ExpandFolder();
  EXPECT_EQ(run.desktop.launched.size(), 1U);
  EXPECT_EQ(window.fTargetFolder.Bytes(), "Tool");
  EXPECT_TRUE(fs::exists(run.scratch / "payload"));
}

TEST_F(ExpandFolder, PatchNeedsAnInstalledFolder) {
  window.fInstallationPatch = true;
  run.desktop.ExpectFolderDialog(chosen);
  run.desktop.ExpectMessage("Patch Failed.  No installation folder exists.");
  window.ExpandFolder();
  EXPECT_TRUE(fs::is_empty(chosen));
  SetLabel(18, "Nothing to patch");
  window.fTargetFolder = "Tool";
  run.desktop.ExpectMessage("Nothing to patch");
  ExpandIntoApplications();
}

}  // namespace
}  // namespace zephin::test
