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

/// Which buttons and rows a dialog of so many entries shows, and where.
template <class Dialog>
void CheckLook(Window& window, int count, int buttonTop, int height, int selectedRow) {
  SCOPED_TRACE(count);
  auto& dialog = dynamic_cast<Dialog&>(window);
  EXPECT_EQ(dialog.QuitBtn()->Top(), buttonTop);
  EXPECT_EQ(dialog.ContinueBtn()->Top(), buttonTop);
  EXPECT_EQ(dialog.Height(), height);
  EXPECT_EQ(dialog.Width(), 340);
  EXPECT_TRUE(dialog.ContinueBtn()->Default());
  EXPECT_FALSE(dialog.QuitBtn()->Default() || dialog.QuitBtn()->Cancel());
  for (int i = 0; i < kSelectionRows; ++i) {
    EXPECT_EQ(Row(dialog, i)->Visible(), i < count);
    EXPECT_EQ(Row(dialog, i)->Top(), 14 + 32 * i);
    EXPECT_EQ(Row(dialog, i)->Value(), i == selectedRow);
    if (i < count) {
      EXPECT_EQ(Row(dialog, i)->Caption().Bytes(), "Entry " + std::to_string(i));
      EXPECT_EQ(Row(dialog, i)->HelpTag().Bytes(), "Tip " + std::to_string(i));
    }
  }
  ScriptedDesktop::Press(window, "ContinueBtn");
}

TEST(SelectChoiceAndOptions, DialogsShrinkToTheirRows) {
  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  struct Size {
    int count;
    int buttonTop;
    int height;
  };
  // Ten rows keep the design, which is nine points more than the others would give.
  for (const Size& size : {Size{1, 46, 86}, Size{9, 302, 342}, Size{10, 343, 383}}) {
    window.fInstallChoices = window.fInstallOptions = Utf8(ListOf(size.count));
    run.desktop.ExpectWindow("Pick One Choice", [&size](Window& dialog) {
      CheckLook<TChoiceDlg>(dialog, size.count, size.buttonTop, size.height, 0);
    });
    run.desktop.ExpectWindow("Select Options", [&size](Window& dialog) {
      CheckLook<TOptionsDlg>(dialog, size.count, size.buttonTop, size.height, -1);
    });
    String choice;
    String options;
    EXPECT_TRUE(window.SelectChoiceAndOptions(choice, options));
    EXPECT_EQ(choice.Bytes(), "Entry 0");
    EXPECT_EQ(options.Bytes(), "");
  }
}

/// The user sets rows and leaves by Continue ('C') or Quit.
template <class Dialog>
ScriptedDesktop::WindowAnswer Answered(const std::vector<int>& rows, char button) {
  return [rows, button](Window& window) {
    for (const int index : rows) {
      Row(dynamic_cast<Dialog&>(window), index)->SetValue(true);
    }
    ScriptedDesktop::Press(window, button == 'C' ? "ContinueBtn" : "QuitBtn");
  };
}

TEST(SelectChoiceAndOptions, WhatIsPickedIsHandedOnByCaption) {
  struct Case {
    std::string choices;
    std::vector<int> picks;  ///< Rows that the user clicks, in this order.
    std::string options;
    std::vector<int> ticks;
    std::string buttons;  ///< C or Q for each dialog that is shown.
    bool result;
    std::string choice;
    std::string captions;
  };
  const std::vector<Case> cases{
      {"", {}, "", {}, "", true, "untouched", "untouched"},
      {"A,a|B,b|C,c", {2, 1}, "", {}, "C", true, "B", "untouched"},
      {"A", {}, "", {}, "Q", false, "A", "untouched"},
      {"A", {}, "O", {0}, "Q", false, "A", "untouched"},
      {"", {}, "O,o|P,p|Q,q", {2, 0}, "C", true, "untouched", "O,Q"},
      {"A|B", {1}, "O|P", {1}, "CC", true, "B", "P"},
      {"A|B", {1}, "O|P", {1}, "CQ", false, "B", "P"},
      {"A", {}, "O|P", {}, "CC", true, "A", ""},
      // Equal captions and rows without one are rows like any other.
      {"A|a|A", {2}, "", {}, "C", true, "A", "untouched"},
      {"|,x|", {2}, "|O||P|", {0, 1, 2, 3}, "CC", true, "", "O,,P"},
      {"<b>&A\xC3\xA9", {}, "", {}, "C", true, "<b>&A\xC3\xA9", "untouched"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.choices + " / " + row.options);
    StubRun run;
    ZephinStubWindow& window = run.BareWindow();
    window.fInstallChoices = Utf8(row.choices);
    window.fInstallOptions = Utf8(row.options);
    const std::size_t choiceDialogs = row.choices.empty() ? 0 : 1;
    if (choiceDialogs > 0) {
      run.desktop.ExpectWindow("Pick One Choice",
                               Answered<TChoiceDlg>(row.picks, row.buttons.front()));
    }
    if (row.buttons.size() > choiceDialogs) {
      run.desktop.ExpectWindow("Select Options",
                               Answered<TOptionsDlg>(row.ticks, row.buttons.back()));
    }
    String choice = "untouched";
    String options = "untouched";
    EXPECT_EQ(window.SelectChoiceAndOptions(choice, options), row.result);
    EXPECT_EQ(choice.Bytes(), row.choice);
    EXPECT_EQ(options.Bytes(), row.captions);
  }
}

TEST(SelectChoiceAndOptions, MoreThanTenEntriesOrMissingCaptionsEndTheRunBeforeTheirDialog) {
  struct Case {
    int choices;
    int options;
    bool hasLabels;
    std::string failure;
  };
  for (const Case& row :
       {Case{11, 1, true, "NilObjectException"}, Case{1, 11, true, "NilObjectException"},
        Case{11, 0, false, "OutOfBoundsException"}, Case{0, 11, false, "OutOfBoundsException"}}) {
    StubRun run;
    ZephinStubWindow& window = run.BareWindow();
    window.fInstallChoices = Utf8(ListOf(row.choices));
    window.fInstallOptions = Utf8(ListOf(row.options));
    if (!row.hasLabels) {
      window.fLabels = {};
    }
    if (row.choices == 1) {
      run.desktop.ExpectWindow("Pick One Choice", "ContinueBtn");
    }
    EXPECT_EQ(run.Call([&window] {
      String choice;
      String options;
      (void)window.SelectChoiceAndOptions(choice, options);
    }),
              0);
    EXPECT_EQ(run.desktop.failures, std::vector<std::string>{row.failure}) << row.choices;
  }
}

}  // namespace
}  // namespace zephin::test
