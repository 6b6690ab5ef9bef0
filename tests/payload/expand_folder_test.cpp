#include <gtest/gtest.h>

#include "dialogs/yes_no_dialog.h"
#include "platform/framework/text.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "tools/make_setup/payload.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using Expected = std::map<std::string, std::string>;

const char* const kAborted =
    "Install Aborted\n\nUnable to delete existing installed folder.  Reboot the computer and try "
    "again or manually delete the previously installed application folder.";

/// A setup with a payload in one file that installs the folder "Tool".
class ExpandFolder : public testing::Test {
 protected:
  ExpandFolder() {
    WriteFile(run.scratch / "payload/new", "n");
    run.SetPayload(run.scratch / "payload", "Tool");
    fs::create_directory(chosen);
    window.fTargetFolder = "Tool";
  }
  /// Installs into the chosen folder and expects these messages.
  void Expand(const std::vector<std::string>& messages = {}) {
    run.desktop.ExpectFolderDialog(chosen);
    for (const std::string& message : messages) {
      run.desktop.ExpectMessage(message);
    }
    window.ExpandFolder();
  }

  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  const fs::path chosen = run.scratch / "Chosen";
  const std::string zip = chosen / "Tool.zip";
  const Expected installed{{"Tool", "/"}, {"Tool/new", "n"}};
};

TEST_F(ExpandFolder, ReplacesAnExistingFolderAndArchive) {
  window.InfoBtn()->SetVisible(true);
  WriteFile(chosen / "Tool/old", "o");
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

TEST_F(ExpandFolder, AsksBeforeReplacingAndObeysTheAnswer) {
  window.fPromptToReplace = true;
  for (const bool agrees : {false, true}) {
    WriteFile(chosen / "Tool/old", "o");
    window.fLabels = Captions({{Caption::Cancel, "No!"},
                               {Caption::Ok, "Yes!"},
                               {Caption::ReplaceTitle, "Really?"},
                               {Caption::ReplaceSecond, "Sure?"}});
    window.fTargetFolder = "Tool";
    run.desktop.milliseconds = 0;
    run.desktop.ExpectFolderDialog(chosen);
    run.desktop.ExpectWindow("Really?", [this, agrees](Window& shown) {
      auto& dialog = dynamic_cast<YesNoDialog&>(shown);
      const String texts = dialog.ConfirmLabel1()->Text() + dialog.ConfirmLabel2()->Text() +
                           dialog.ConfirmLabel3()->Text() + dialog.CancelBtn()->Caption() +
                           dialog.OKBtn()->Caption();
      EXPECT_EQ(texts.Bytes(),
                "Destination folder already exists.Sure?" + (chosen / "Tool").string() + "No!Yes!");
      // The progress line appears only after the deletion.
      EXPECT_EQ(window.MessageLabel()->Text().Bytes(), "");
      ScriptedDesktop::Press(shown, agrees ? "OKBtn" : "CancelBtn");
    });
    window.ExpandFolder();
    EXPECT_EQ(Tree(chosen), agrees ? installed : (Expected{{"Tool", "/"}, {"Tool/old", "o"}}));
    EXPECT_EQ(window.fTargetFolder.Bytes(), (chosen / "Tool").string());
    // One second after the deletion, half a second for the bar, one after deleting the archive.
    EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds), agrees ? 2550 : 0, 100);
  }
}

TEST_F(ExpandFolder, PlainFileAtTheTargetIsKept) {
  WriteFile(chosen / "Tool", "a file");
  Expand();
  EXPECT_EQ(ReadFile(chosen / "Tool"), "a file");
}

TEST_F(ExpandFolder, FolderThatCannotBeDeletedAbortsAfterFourSeconds) {
  const fs::path applications = run.Applications();
  WriteFile(applications / "Tool/old", "o");
  fs::permissions(applications, fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  window.fApplicationFolder = true;
  run.desktop.ExpectMessage(kAborted);
  window.ExpandFolder();
  EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds), 4000, 100);
  EXPECT_TRUE(run.desktop.launched.empty());
  EXPECT_EQ(window.fTargetFolder.Bytes(), (applications / "Tool").string());

  run.desktop.After(3900, [&applications] {
    fs::permissions(applications, fs::perms(0755));
    fs::remove(applications / "Tool");
  });
  window.fTargetFolder = "Tool";
  window.ExpandFolder();
  EXPECT_EQ(Tree(applications), installed);
}

TEST_F(ExpandFolder, LinkToAFolderIsReplacedLikeAFolderAndItsTargetIsKept) {
  WriteFile(run.scratch / "mine/file", "m");
  fs::create_directory_symlink("../mine", chosen / "Tool");
  window.fPromptToReplace = true;
  for (const char* button : {"CancelBtn", "OKBtn"}) {
    EXPECT_TRUE(fs::is_symlink(chosen / "Tool"));
    window.fTargetFolder = "Tool";
    run.desktop.ExpectFolderDialog(chosen);
    run.desktop.ExpectWindow("Confirmation", button);
    window.ExpandFolder();
    EXPECT_EQ(Tree(run.scratch / "mine"), (Expected{{"file", "m"}}));
  }
  EXPECT_EQ(Tree(chosen), installed);
}

TEST_F(ExpandFolder, FullFolderWithTheArchivesNameIsKept) {
  WriteFile(zip + "/mine", "m");
  run.desktop.ExpectFolderDialog(chosen);
  run.desktop.ExpectMessage("Installation Failed");
  // The archive is never deleted, so the attempts end only with the run.
  run.desktop.After(10'000, [] { Quit(0); });
  EXPECT_EQ(run.Call([this] { window.ExpandFolder(); }), 0);
  EXPECT_EQ(Tree(chosen), (Expected{{"Tool.zip", "/"}, {"Tool.zip/mine", "m"}}));
}

TEST_F(ExpandFolder, NameOutsideItsParentIsRefused) {
  for (const char* path : {"Chosen/mine", "Chosen/a/mine", "Chosen/Patch/mine", "Chosen/..Patch/m",
                           "x/y/mine", "x/yPatch/mine", "xPatch/mine"}) {
    WriteFile(run.scratch / path, "m");
  }
  window.fPromptToReplace = true;
  const Expected before = Tree(run.scratch.Path());
  for (const bool isPatch : {false, true}) {
    window.fInstallationPatch = isPatch;
    for (const char* name : {"", ".", "..", "../x", "../x/y", "a/..", "./a/../..", "../Chosen/a"}) {
      window.fTargetFolder = name;
      Expand({kAborted});
      EXPECT_EQ(Tree(run.scratch.Path()), before) << name;
    }
  }
  EXPECT_EQ(run.desktop.milliseconds, 0);
}

TEST_F(ExpandFolder, PreInstallListRunsBeforeTheFolderDialog) {
  WriteFile(run.Home() / "old", "o");
  window.fPostCopy = Utf8("preinstalldelete=" + (run.Home() / "old").string());
  bool existed = true;
  run.desktop.onFolderDialog = [&](const auto&) { existed = fs::exists(run.Home() / "old"); };
  run.desktop.ExpectFolderDialog("");
  window.ExpandFolder();
  EXPECT_FALSE(existed);
  EXPECT_TRUE(window.fTargetFolder.IsEmpty());
  EXPECT_TRUE(run.desktop.launched.empty());
}

TEST_F(ExpandFolder, FailedCopyIsReportedAndTheInstallContinues) {
  WriteFile(run.Resources() / "after", "x");
  window.fExecuteAfterName = "after";
  window.fPostCopy = "nothing=";
  WriteFile(zip, "left over");
  fs::remove(run.Resources() / "Data2");
  Expand({"Installation Failed", "Install Error\n\nContact Publisher"});
  EXPECT_EQ(run.desktop.launched,
            (std::vector<std::string>{zip, (run.Resources() / "after").string()}));
  EXPECT_TRUE(fs::is_empty(chosen));
  EXPECT_EQ(window.MessageLabel()->Text().Bytes(), "Install in Progress...");
  EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds), 520, 20);
}

TEST_F(ExpandFolder, AfterProgramIsFoundFirstAndLaunchedBeforeTheArchiveIsDeleted) {
  WriteFile(run.Home() / "there", "x");
  fs::create_symlink(run.Home() / "there", run.Resources() / "link");
  const std::string home = run.Home();
  const std::string mark = home + "/mark";
  // The copy list creates "late", which is too late, and deletes the mark before the program runs.
  window.fPostCopy = Utf8("preinstallcopy=" + home + "/there;" + home + "/late|delete=" + mark);
  const std::vector<std::pair<const char*, std::vector<std::string>>> rows{
      {"UserAccount/late", {zip}},
      {"UserAccount/there", {zip, home + "/there"}},
      {"after", {zip, run.Resources() / "after"}},
      {"link", {zip, home + "/there"}},
      {"", {zip}},
  };
  for (const auto& [name, launched] : rows) {
    run.desktop.launched.clear();
    WriteFile(mark, "");
    run.desktop.onLaunch = [this, &mark](const auto& path) {
      EXPECT_TRUE(fs::exists(zip)) << path;
      EXPECT_EQ(fs::exists(mark), path == zip) << path;
    };
    window.fTargetFolder = "Tool";
    window.fExecuteAfterName = name;
    Expand();
    EXPECT_EQ(run.desktop.launched, launched) << name;
  }
}

TEST_F(ExpandFolder, RelocationSkipsTheInstall) {
  WriteFile(run.Resources() / "Data#1", "piece");
  window.fPostCopy = Utf8("preinstalldelete=" + (run.scratch / "payload").string());
  window.ExpandFolder();
  EXPECT_EQ(run.desktop.launched.size(), 1U);
  EXPECT_EQ(window.fTargetFolder.Bytes(), "Tool");
  EXPECT_TRUE(fs::exists(run.scratch / "payload"));
}

TEST_F(ExpandFolder, PatchNeedsAnInstalledFolderAndIsExpandedBesideIt) {
  window.fInstallationPatch = true;
  Expand({"Patch Failed.  No installation folder exists."});
  EXPECT_TRUE(fs::is_empty(chosen));

  WriteFile(run.scratch / "patch/new", "2");
  run.SetPayload(run.scratch / "patch", "ToolPatch");
  WriteFile(chosen / "Tool/new", "1");
  WriteFile(chosen / "Tool/old", "o");
  WriteFile(chosen / "ToolPatch/stale", "s");
  window.fTargetFolder = "Tool";
  window.fPromptToReplace = true;
  // The copy list runs after the patch's own folder was deleted.
  window.fPostCopy =
      Utf8("new=" + (run.Home() / "new").string() + "|delete=" + chosen.string() + "/Tool/old");
  Expand({"Install Error\n\nMissing File: new"});
  EXPECT_EQ(Tree(chosen), (Expected{{"Tool", "/"}, {"Tool/new", "2"}}));
  EXPECT_EQ(run.desktop.launched, std::vector<std::string>{zip});
  EXPECT_EQ(window.fTargetFolder.Bytes(), (chosen / "ToolPatch").string());
}

// The state of the relocated copy of a split setup.
TEST(ExpandFolderOfACopy, PiecesTakePrecedenceOverASinglePayload) {
  StubRun run;
  run.machine.temporaryFolder = run.Disk();
  ZephinStubWindow& window = run.BareWindow();
  window.fTargetFolder = "Tool";
  WriteFile(run.scratch / "payload/new", "n");
  run.SetPayload(run.scratch / "payload", "Tool");
  const fs::path disc = run.scratch / "Disc";
  fs::create_directory(disc);
  make_setup::CutIntoPieces(run.Resources() / "Data2", 100, run.Resources(), disc);
  WriteFile(run.Resources() / "Data2", "no archive");
  run.desktop.clipboard = disc.string() + "/";
  run.desktop.ExpectFolderDialog(disc);
  window.ExpandFolder();
  EXPECT_EQ(Tree(disc / "Tool"), (Expected{{"new", "n"}}));
}

}  // namespace
}  // namespace zephin::test
