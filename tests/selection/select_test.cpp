#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "selection/selection_dialogs.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

/// The rows of either dialog.
Ref<RadioButton> Row(TChoiceDlg& dialog, int index) {
  return dialog.ChoiceRadio(index);
}
Ref<CheckBox> Row(TOptionsDlg& dialog, int index) {
  return dialog.OptionCheckBox(index);
}

std::string ListOf(int count) {
  std::string list;
  for (int i = 0; i < count; ++i) {
    const std::string number = std::to_string(i);
    list.append(i == 0 ? "Entry " : "|Entry ").append(number);
    list.append(",/x/a.zip,Data,Tip ").append(number).append(",more");
  }
  return list;
}

/// Checks the buttons and rows of a dialog with `count` entries.
template <class Dialog>
ScriptedDesktop::WindowAnswer Looks(int count, int buttonTop, int selectedRow) {
  return [=](Window& window) {
    SCOPED_TRACE(count);
    auto& dialog = dynamic_cast<Dialog&>(window);
    EXPECT_EQ(dialog.QuitBtn()->Top(), buttonTop);
    EXPECT_EQ(dialog.ContinueBtn()->Top(), buttonTop);
    EXPECT_EQ(dialog.Height(), buttonTop + 40);
    EXPECT_TRUE(dialog.ContinueBtn()->Default());
    EXPECT_FALSE(dialog.QuitBtn()->Default() || dialog.QuitBtn()->Cancel());
    for (int i = 0; i < kSelectionRows; ++i) {
      EXPECT_EQ(Row(dialog, i)->Visible(), i < count);
      EXPECT_EQ(Row(dialog, i)->Value(), i == selectedRow);
      EXPECT_EQ(Row(dialog, i)->HelpTag().Bytes(), i < count ? "Tip " + std::to_string(i) : "");
    }
    ScriptedDesktop::Press(window, "ContinueBtn");
  };
}

/// The user sets rows and presses Continue ('C') or Quit.
template <class Dialog>
ScriptedDesktop::WindowAnswer Picks(const std::vector<int>& rows, char button) {
  return [rows, button](Window& window) {
    for (const int index : rows) {
      Row(dynamic_cast<Dialog&>(window), index)->SetValue(true);
    }
    ScriptedDesktop::Press(window, button == 'C' ? "ContinueBtn" : "QuitBtn");
  };
}

class SelectChoiceAndOptions : public testing::Test {
 protected:
  /// Returns the exit status, or -1 if the run continues.
  int Select(const std::string& choices, const std::string& options) {
    run.BareWindow().fInstallChoices = Utf8(choices);
    run.BareWindow().fInstallOptions = Utf8(options);
    choice = captions = "untouched";
    return run.Call([this] { result = run.BareWindow().SelectChoiceAndOptions(choice, captions); });
  }

  StubRun run;
  String choice;
  String captions;
  bool result = false;
};

TEST_F(SelectChoiceAndOptions, DialogsShrinkToTheirRows) {
  // Ten rows keep the designed layout, nine points taller than the rule for fewer rows.
  for (const auto& [count, top] : {std::pair{1, 46}, {9, 302}, {10, 343}}) {
    run.desktop.ExpectWindow("Pick One Choice", Looks<TChoiceDlg>(count, top, 0));
    run.desktop.ExpectWindow("Select Options", Looks<TOptionsDlg>(count, top, -1));
    Select(ListOf(count), ListOf(count));
    EXPECT_EQ(choice.Bytes() + captions.Bytes(), "Entry 0");
  }
}

TEST_F(SelectChoiceAndOptions, PicksAreReturnedAsCaptions) {
  struct Case {
    std::string choices;
    std::vector<int> picks;  ///< Rows that the user clicks, in this order.
    std::string options;
    std::vector<int> ticks;
    std::string buttons;  ///< C or Q for each dialog shown.
    bool result;
    std::string choice;
    std::string captions;
  };
  const std::vector<Case> cases{
      {"", {}, "", {}, "", true, "untouched", "untouched"},
      {"A,a|B,b|C,c", {2, 1}, "", {}, "C", true, "B", "untouched"},
      {"A", {}, "O", {0}, "Q", false, "A", "untouched"},
      {"", {}, "O,o|P,p|Q,q", {2, 0}, "C", true, "untouched", "O,Q"},
      {"A|B", {1}, "O|P", {1}, "CQ", false, "B", "P"},
      {"A", {}, "O|P", {}, "CC", true, "A", ""},
      // Rows with equal captions or without one.
      {"A|a|A", {2}, "", {}, "C", true, "A", "untouched"},
      {"|,x|", {2}, "|O||P|", {0, 1, 2, 3}, "CC", true, "", "O,,P"},
      {"<b>&A\xC3\xA9", {}, "", {}, "C", true, "<b>&A\xC3\xA9", "untouched"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.choices + " / " + row.options);
    const std::size_t choiceDialogs = row.choices.empty() ? 0 : 1;
    if (choiceDialogs > 0) {
      run.desktop.ExpectWindow("Pick One Choice", Picks<TChoiceDlg>(row.picks, row.buttons[0]));
    }
    if (row.buttons.size() > choiceDialogs) {
      run.desktop.ExpectWindow("Select Options", Picks<TOptionsDlg>(row.ticks, row.buttons.back()));
    }
    EXPECT_EQ(Select(row.choices, row.options), -1);
    EXPECT_EQ(result, row.result);
    EXPECT_EQ(choice.Bytes(), row.choice);
    EXPECT_EQ(captions.Bytes(), row.captions);
  }
}

TEST_F(SelectChoiceAndOptions, MoreThanTenEntriesOrMissingCaptionsEndTheRunBeforeTheirDialog) {
  EXPECT_EQ(Select(ListOf(11), "O"), 0);
  run.desktop.ExpectWindow("Pick One Choice", "ContinueBtn");
  EXPECT_EQ(Select("C", ListOf(11)), 0);
  run.BareWindow().fLabels = {};
  EXPECT_EQ(Select(ListOf(11), ""), 0);
  EXPECT_EQ(Select("", ListOf(11)), 0);
  EXPECT_EQ(run.desktop.failures,
            (std::vector<std::string>{"NilObjectException", "NilObjectException",
                                      "OutOfBoundsException", "OutOfBoundsException"}));
}

}  // namespace
}  // namespace zephin::test
