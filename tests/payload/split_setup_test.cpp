#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "dialogs/message_modal.h"
#include "platform/framework/text.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

/// A main window that counts how often the tray is opened.
class WindowWithTray : public ZephinStubWindow {
 public:
  int ejects = 0;

 private:
  void Event_Open() override {}
  void EjectCD() override { ++ejects; }
};

/// One of the two forms of joining the pieces.
using Combine = void (ZephinStubWindow::*)(const String& firstPartPath, const String& zipPath);

/// A split setup with its first piece in the bundle and the others on discs, mounted at "CD".
class SplitSetup : public testing::TestWithParam<Combine> {
 protected:
  SplitSetup() {
    WriteFile(run.Resources() / "Data#1", "one,");
    fs::create_directory(run.scratch / "CD");
    run.desktop.clipboard = (run.scratch / "CD").string() + "/";
    window->fLabels = run.BareWindow().fLabels;
  }

  void AddPiece(const std::string& name, const std::string& content) const {
    WriteFile(run.scratch / "CD" / ("Data#" + name), content);
  }
  int Join() {
    return run.Call([this] {
      std::invoke(GetParam(), *window, Utf8(run.Resources() / "Data#1"), Utf8(archive));
    });
  }
  void ExpectQuestion(const std::string& button, const std::function<void()>& before = {}) {
    run.desktop.ExpectWindow("Confirmation", [this, button, before](Window& asked) {
      EXPECT_EQ(run.desktop.cursor, MouseCursor::Wait);
      if (before) {
        before();
      }
      ScriptedDesktop::Press(asked, button);
    });
  }

  StubRun run;
  Ref<WindowWithTray> window = (run.BareWindow(), MakeWindow<WindowWithTray>());
  const std::string archive = run.scratch / "Tool.zip";
  const bool isDirect = GetParam() == &ZephinStubWindow::CombineSplitSetup;
  const std::string yes = "Btn2";
  const std::string no = "Btn3";
};

TEST_P(SplitSetup, PiecesAreJoinedInNumericOrder) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> rows{
      {{"End"}, "one,End,"},
      {{"2", "3", "End"}, "one,2,3,End,"},
      {{"2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "End"},
       "one,2,3,4,5,6,7,8,9,10,11,End,"},
      // The last piece is taken where a number is missing, so the payload is short.
      {{"3", "4", "End"}, "one,End,"},
      {{"02", "End"}, "one,End,"},
      {{"2", "4", "End"}, "one,2,End,"},
  };
  for (const auto& [pieces, joined] : rows) {
    for (const std::string& piece : pieces) {
      AddPiece(piece, piece + ",");
    }
    WriteFile(archive, "left by an earlier run");
    EXPECT_EQ(Join(), -1);
    EXPECT_EQ(ReadFile(archive), joined);
    EXPECT_EQ(window->ejects, std::count(joined.begin(), joined.end(), ','));
    EXPECT_EQ(run.desktop.cursor, MouseCursor::Arrow);
    window->ejects = 0;
    fs::remove_all(run.scratch / "CD");
  }
}

TEST_P(SplitSetup, AsksForTheNextDiscUntilItIsThere) {
  const std::string large = Noise(2'500'000);
  AddPiece("2", large);
  ExpectQuestion(yes);  // No disc was inserted.
  ExpectQuestion(yes, [this] {
    fs::remove_all(run.scratch / "CD");
    AddPiece("3", "three,");
  });
  ExpectQuestion(yes, [this] { AddPiece("End", "end"); });
  EXPECT_EQ(Join(), -1);
  EXPECT_EQ(ReadFile(archive), "one," + large + "three,end");
}

TEST_P(SplitSetup, NoToTheQuestionEndsTheRun) {
  AddPiece("2", "two");
  WriteFile(archive, "old");
  ExpectQuestion(no);
  EXPECT_EQ(Join(), 0);
  EXPECT_EQ(ReadFile(archive), isDirect ? "one,two" : "old");
}

TEST_P(SplitSetup, OtherTextOnTheClipboardLeadsToTheQuestionInThePublishersWords) {
  const std::string builtIn =
      "Insert next CD.  When you see the CD icon, click YES to continue or NO to quit.";
  for (const auto& [clipboard, text] : {std::pair{"", builtIn}, {"CD/", "Next disc?"}}) {
    run.desktop.clipboard = clipboard;
    run.desktop.ExpectWindow("Confirmation", [this, text = text](Window& asked) {
      EXPECT_EQ(dynamic_cast<MessageModal&>(asked).MessageText()->Text().Bytes(), text);
      ScriptedDesktop::Press(asked, no);
    });
    EXPECT_EQ(Join(), 0);
    window->fLabels = Captions({{Caption::NextDisc, "Next disc?"}});
  }
}

TEST_P(SplitSetup, PieceThatCannotBeOpenedEndsTheRun) {
  fs::create_directory(run.scratch / "CD/Data#2");
  EXPECT_EQ(Join(), 0);
  EXPECT_EQ(run.desktop.failures, std::vector<std::string>{"NilObjectException"});
  EXPECT_EQ(run.desktop.cursor, MouseCursor::Wait);
  EXPECT_EQ(fs::exists(archive), isDirect);
}

TEST_P(SplitSetup, ArchiveThatCannotBeCreatedIsNotReported) {
  fs::create_directory(archive);
  WriteFile(archive + "/in the way", "");
  if (!isDirect) {
    ExpectQuestion(yes, [this] { AddPiece("End", ""); });
  }
  EXPECT_EQ(Join(), -1);
  EXPECT_EQ(window->ejects, isDirect ? 0 : 2);
  EXPECT_EQ(run.desktop.cursor, MouseCursor::Arrow);
}

TEST_P(SplitSetup, FullDiskMakesAShortArchiveSilently) {
  AddPiece("End", std::string(100'000, 'x'));
  const FullDisk full(10'000);
  EXPECT_EQ(Join(), -1);
  EXPECT_EQ(fs::file_size(archive), 10'000U);
}

TEST_P(SplitSetup, QuitWhileJoiningEndsTheRun) {
  AddPiece("End", std::string(5'000'000, 'x'));
  run.desktop.After(0, [] { Quit(0); });
  EXPECT_EQ(Join(), 0);
}

INSTANTIATE_TEST_SUITE_P(BothForms, SplitSetup,
                         testing::Values(&ZephinStubWindow::CombineSplitSetup,
                                         &ZephinStubWindow::CombineSplitSetupX));

}  // namespace
}  // namespace zephin::test
