#include "dialogs/conflict.h"

#include <gtest/gtest.h>

#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

using GlobalsVk::gConflictType;

/// The window's size, the text's, and the place of the buttons, in points.
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
const std::vector<int> kMedium{572, 343, 532, 277, 303, 288, 380, 472};
const std::vector<int> kLong{572, 443, 532, 377, 403, 288, 380, 472};

class Conflict : public testing::Test {
 protected:
  Conflict() { run.BareWindow(); }
  /// The next window with that title has this text; it is left by `button`.
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

TEST_F(Conflict, LengthInCharactersPicksTheSizeAndTheEndTakesItBack) {
  struct Row {
    std::size_t length;
    const char* end;
    std::vector<int> fit;
    int heightLeft = 243;
  };
  const std::vector<Row> rows{
      {0, "", kTiny},
      {39, "", kTiny},
      {38, "\u65E5", kTiny},
      {40, "", kShort},
      {199, "", kShort},
      {200, "", kNormal},
      {400, "", kNormal},
      {401, "", kMedium},
      {600, "", kMedium},
      {601, "", kLong},
      // Shrunk as a short text, it grows back as a tiny one.
      {38, "\n", kShort, 243 + 100},
  };
  for (const auto& row : rows) {
    const Ref<MessageModal> window = MakeWindow<MessageModal>();
    const String text = Utf8(std::string(row.length, 'x') + row.end);
    ViewConst::MessageModalStartSize(*window, text);
    EXPECT_EQ(FitOf(*window), row.fit) << row.length;
    ViewConst::MessageModalEndSize(*window, text);
    EXPECT_EQ(window->Height(), row.heightLeft) << row.length;
    EXPECT_EQ(window->Btn1()->Left(), 288);
  }
}

TEST_F(Conflict, ButtonsCloseUpToTheRightOfThoseThatAreHidden) {
  const auto leftsWithout = [](auto hide) {
    const Ref<MessageModal> window = MakeWindow<MessageModal>();
    hide(*window)->SetVisible(false);
    ViewConst::MessageModalStartSize(*window, Utf8(std::string(300, 'x')));
    return std::vector{window->Btn1()->Left(), window->Btn2()->Left(), window->Btn3()->Left()};
  };
  EXPECT_EQ(leftsWithout([](MessageModal& w) { return w.Btn2(); }), (std::vector{380, 380, 472}));
  EXPECT_EQ(leftsWithout([](MessageModal& w) { return w.Btn3(); }), (std::vector{472, 472, 472}));
}

TEST_F(Conflict, QuestionIsFittedAndAnsweredByItsCaptions) {
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
