#include "dialogs/conflict.h"

#include <gtest/gtest.h>

#include "dialogs/message_modal.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

using GlobalsVk::gConflictType;

/// The sizes of the window and the text, and the positions of the buttons, in points.
std::vector<int> FitOf(const MessageModal& window) {
  return {window.Width(),
          window.Height(),
          window.MessageText()->Width(),
          window.MessageText()->Height(),
          window.Btn3()->Top(),
          window.Btn1()->Left(),
          window.Btn2()->Left(),
          window.Btn3()->Left()};
}

const std::vector<int> kTiny{322, 93, 282, 27, 53, 38, 130, 222};
const std::vector<int> kShort{512, 193, 472, 127, 153, 228, 320, 412};
const std::vector<int> kNormal{572, 243, 532, 177, 203, 288, 380, 472};

class Conflict : public testing::Test {
 protected:
  Conflict() { run.BareWindow(); }
  /// The next window has this title, text and size. It is answered by `button`.
  void Expect(const char* title, const char* text, const std::vector<int>& fit,
              const char* button) {
    run.desktop.ExpectWindow(title, [=](Window& shown) {
      auto& window = dynamic_cast<MessageModal&>(shown);
      EXPECT_EQ(window.MessageText()->Text().Bytes(), text);
      EXPECT_EQ(FitOf(window), fit);
      ScriptedDesktop::Press(window, button);
    });
  }
  StubRun run;
};

TEST_F(Conflict, TextLengthSelectsTheSizeAndTheEndRestoresIt) {
  const auto xs = [](std::size_t count) { return std::string(count, 'x'); };
  struct Row {
    std::vector<std::string> texts;
    std::vector<int> fit;
    int heightLeft = 243;
  };
  const std::vector<Row> rows{
      {{"", xs(39), xs(38) + "\u65E5"}, kTiny},
      {{xs(40), xs(199)}, kShort},
      {{xs(200), xs(400)}, kNormal},
      {{xs(401), xs(600)}, {572, 343, 532, 277, 303, 288, 380, 472}},
      {{xs(601)}, {572, 443, 532, 377, 403, 288, 380, 472}},
      // A line feed counts for the first size only, so that the original size is not restored.
      {{xs(38) + "\n"}, kShort, 243 + 100},
  };
  for (const auto& row : rows) {
    for (const std::string& text : row.texts) {
      const Ref<MessageModal> window = MakeWindow<MessageModal>();
      ViewConst::MessageModalStartSize(*window, Utf8(text));
      EXPECT_EQ(FitOf(*window), row.fit) << text;
      ViewConst::MessageModalEndSize(*window, Utf8(text));
      EXPECT_EQ(window->Height(), row.heightLeft) << text;
      EXPECT_EQ(window->Btn1()->Left(), 288);
    }
  }
}

TEST_F(Conflict, ButtonsMoveToThePlaceOfAHiddenOne) {
  for (const auto& [hidden, left1, left2] : {std::tuple{"Btn2", 380, 380}, {"Btn3", 472, 472}}) {
    const Ref<MessageModal> window = MakeWindow<MessageModal>();
    window->ControlByName(hidden)->SetVisible(false);
    ViewConst::MessageModalStartSize(*window, Utf8(std::string(300, 'x')));
    EXPECT_EQ(window->Btn1()->Left(), left1) << hidden;
    EXPECT_EQ(window->Btn2()->Left(), left2) << hidden;
    EXPECT_EQ(window->Btn3()->Left(), 472) << hidden;
  }
}

TEST_F(Conflict, QuestionIsSizedAndReturnsTheAnswer) {
  Expect("Confirmation", "Go on?", kTiny, "Btn2");
  EXPECT_TRUE(GlobalsVk::YesNoDlg("Go on?"));
  Expect("Confirmation", "UNKNOWN ERROR. ", kTiny, "Btn3");
  EXPECT_FALSE(GlobalsVk::YesNoDlg(""));
  EXPECT_EQ(gConflictType, 0);
}

TEST_F(Conflict, ErrorMessageKeepsTheDesignSizeAndClearsItsCode) {
  GlobalsVk::PoseConflictDialog();  // Nothing is pending, so nothing is shown.
  const std::vector<std::tuple<int, const char*, const char*>> rows{
      {999, "the text", "the text"},
      {999, "", ""},
      {39, "not this", "INSUFFICIENT RAM.\n\nUnable to process picture due to RAM shortage."},
      {7, "not this", "UNKNOWN ERROR. "},
  };
  for (const auto& [code, text, shown] : rows) {
    gConflictType = code;
    GlobalsVk::gErrorString = text;
    Expect("Error Message", shown, kNormal, "Btn3");
    GlobalsVk::PoseConflictDialog();
    EXPECT_EQ(gConflictType, 0) << code;
    EXPECT_FALSE(ImplicitMessageModal()->Btn2()->Visible());
  }
}

}  // namespace
}  // namespace zephin::test
