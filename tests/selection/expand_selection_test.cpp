#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/loopback_server.h"
#include "tests/support/stub_run.h"
#include "tests/tools/make_setup/trees.h"
#include "tools/make_setup/zip_folder.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using make_setup::MakeTree;
using make_setup::TreeWords;

/// A machine with an installed folder "Place/Tool", and archives in the bundle.
class ExpandSelection : public testing::Test {
 protected:
  ExpandSelection() { window.fTargetFolder = Utf8(tool); }

  void AddArchive(const std::string& name, const std::string& words) const {
    const ScratchFolder content;
    MakeTree(content.Path(), words);
    make_setup::ZipFolder(content.Path(), run.Resources() / name);
  }
  /// Creates what the main payload installs.
  void Install(const std::string& words) const {
    fs::remove_all(tool.parent_path());
    MakeTree(tool, words);
  }
  /// Places what the user picked from a list, which serves as choices and as options.
  void Place(const std::string& list, const char* choice, const char* options) {
    window.fInstallChoices = window.fInstallOptions = Utf8(list);
    window.ExpandChoiceAndOptions(choice, options);
  }

  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  const fs::path tool = run.scratch / "Place/Tool";
};

TEST_F(ExpandSelection, ContentIsMergedIntoItsFolder) {
  AddArchive("pack.zip", ".h=new a=new x/b=new y/c=new");
  const std::string pack = ".h=new a=new x/ x/b=new y/ y/c=new";
  const std::string extras = "E/ E/.h=new E/a=new E/x/ E/x/b=new E/y/ E/y/c=new";
  // The entry's folder, the installed tree before, and the tree afterwards.
  const std::vector<std::array<std::string, 3>> rows{
      {"Tool", "", pack},
      {"tOOL", "a=old m=old", ".h=new a=new m=old x/ x/b=new y/ y/c=new"},
      {"", "a=old", pack},
      {"E", "", extras},
      {"E", "E/a=old", extras},
      // A full folder stays, and the archive's is lost; an empty one and a file are replaced.
      {"E", "E/x/ E/y=old", extras},
      {"E", "E/x/m=old", "E/ E/.h=new E/a=new E/x/ E/x/m=old E/y/ E/y/c=new"},
  };
  for (const std::string suffix : {"_Choice", "_Option"}) {
    for (const auto& [folder, installed, result] : rows) {
      SCOPED_TRACE(folder + suffix);
      Install(installed);
      // What an earlier run left in the temporary folder is deleted.
      const bool isTarget = folder == "Tool" || folder == "tOOL";
      const fs::path temporary = (isTarget ? tool : tool / folder).string() + suffix;
      if (isTarget || !installed.empty()) {
        MakeTree((folder.empty() ? tool / suffix : temporary), "stale=");
      }
      const std::string list = "Pack,C:/none,|Mine,/any/pack.zip," + folder;
      Place(list, suffix == "_Choice" ? "MINE" : "", suffix == "_Option" ? "MINE" : "");
      EXPECT_EQ(TreeWords(tool), result);
      EXPECT_FALSE(fs::exists(temporary));
    }
  }
}

TEST_F(ExpandSelection, LastChoiceAndEveryOptionOfEqualCaptionsArePlaced) {
  AddArchive("1.zip", "one=1");
  AddArchive("2.zip", "two=2");
  const std::string list = "Same,/1.zip,A|Other,/1.zip,B|SAME,/2.zip,A";
  Install("");
  Place(list, "Same", "");
  EXPECT_EQ(TreeWords(tool), "A/ A/two=2");
  EXPECT_EQ(run.desktop.bringToFrontCalls, 1);
  Install("");
  // The second finds the folder that the first created.
  Place(list, "", "none,same");
  EXPECT_EQ(TreeWords(tool), "A/ A/one=1 A/two=2");
}

TEST_F(ExpandSelection, ArchiveThatCannotBeExpandedIsReportedAndTheRestContinues) {
  AddArchive("good.zip", "a=1");
  WriteFile(run.Resources() / "bad.zip", "no archive");
  Install("file=f B/keep=k");
  window.fInstallChoices = "C,/missing.zip,Tool";
  // The third is no address, although it contains "http".
  window.fInstallOptions = "1,/bad.zip,B|2,/good.zip,file|3,/x/http.zip,D|4,/good.zip,G";
  run.desktop.ExpectMessage("Install failed for selected choice");
  for (const char* caption : {"1", "2", "3"}) {
    run.desktop.ExpectMessage(std::string("Install failed for option ") + caption);
  }
  window.ExpandChoiceAndOptions("C", "1,2,3,4");
  EXPECT_EQ(TreeWords(tool), "B/ B/keep=k B_Option/ D/ G/ G/a=1 file=f");
}

TEST_F(ExpandSelection, ItemThatCannotBeMovedIsReportedAndDeletedWithTheTemporaryFolder) {
  AddArchive("pack.zip", "a=1 b=2 c=3");
  Install("");
  run.desktop.After(0, [this] { fs::remove(tool.string() + "_Choice/b"); });
  run.desktop.ExpectMessage("Failed to create " + (tool / "b").string());
  Place("C,pack.zip,Tool", "C", "");
  EXPECT_EQ(TreeWords(tool.parent_path()), "Tool/ Tool/a=1 Tool/c=3");
}

TEST(ExpandSelectionAlone, OutsideABundleTheArchiveIsMissingAndWithoutAProgramTheRunEnds) {
  for (const bool isKnown : {true, false}) {
    StubRun run;
    run.machine.executable = isKnown ? (run.scratch / "program").string() : "";
    ZephinStubWindow& window = run.BareWindow();
    window.fTargetFolder = Utf8(run.scratch / "Tool");
    window.fInstallChoices = "C,pack.zip,Tool";
    if (isKnown) {
      run.desktop.ExpectMessage("Install failed for selected choice");
    }
    EXPECT_EQ(run.Call([&window] { window.ExpandChoiceAndOptions("C", ""); }), isKnown ? -1 : 0);
    EXPECT_EQ(run.desktop.failures, isKnown ? std::vector<std::string>{}
                                            : std::vector<std::string>{"NilObjectException"});
  }
}

TEST_F(ExpandSelection, DownloadedOptionIsShownByNameAndMergedWithLeftovers) {
  const std::string noise = Noise(20'000);
  AddArchive("pack.zip", "noise=" + noise);
  const LoopbackServer server(HttpResponse("200 OK", ReadFile(run.Resources() / "pack.zip")));
  Install("E/keep=k E_Option/stale=s");
  std::string lineMeanwhile;
  run.desktop.After(0, [&] { lineMeanwhile = window.MessageLabel()->Text().Bytes(); });
  std::string address = server.Address("/x/pack.zip?y=z");
  address.replace(0, 4, "HttP");
  Place("Pack," + address + ",E", "", "Pack");
  EXPECT_EQ(TreeWords(tool), "E/ E/keep=k E/noise=" + noise + " E/stale=s");
  EXPECT_EQ(lineMeanwhile, "Installing Options Pack");
  EXPECT_EQ(window.MessageLabel()->Text().Bytes(), "Please Wait");
}

TEST_F(ExpandSelection, NotesAndAddressComeLastAndOnlyAfterAnInstall) {
  window.fPostInstallNotes = "Thanks";
  window.fCompletionURL = "example.com/done";
  window.MessageLabel()->SetText("before");
  run.desktop.ExpectWindow("Release Notes", [this](Window& notes) {
    EXPECT_TRUE(run.desktop.opened.empty());
    EXPECT_FALSE(notes.ControlByName("QuitBtn")->Visible());
    ScriptedDesktop::Press(notes, "OKBtn");
  });
  window.ExpandChoiceAndOptions("", "");
  EXPECT_EQ(run.desktop.opened, std::vector<std::string>{"example.com/done"});
  EXPECT_EQ(window.MessageLabel()->Text().Bytes(), "before");
  window.fTargetFolder = "";
  window.ExpandChoiceAndOptions("C", "O");
  EXPECT_EQ(run.desktop.opened.size(), 1U);
  EXPECT_EQ(run.desktop.bringToFrontCalls, 0);
}

}  // namespace
}  // namespace zephin::test
