#include "dialogs/conflict.h"

#include <gtest/gtest.h>

#include "tests/support/stub_run.h"
#include "util/globals.h"

namespace zephin::test {
namespace {

using GlobalsVk::gConflictType;
using GlobalsVk::PoseConflictDialog;
using GlobalsVk::YesNoDlg;

/// What a size class makes of the window, in points.
struct Fit {
  int width, height, textWidth, textHeight, top, left1, left2, left3;
  bool operator==(const Fit&) const = default;
};

Fit FitOf(const MessageModal& window) {
  EXPECT_EQ(window.Btn1()->Top(), window.Btn3()->Top());
  EXPECT_EQ(window.Btn2()->Top(), window.Btn3()->Top());
  const Ref<Label> text = window.MessageText();
  return {window.Width(),        window.Height(),      text->Width(),
          text->Height(),        window.Btn3()->Top(), window.Btn1()->Left(),
          window.Btn2()->Left(), window.Btn3()->Left()};
}

std::ostream& operator<<(std::ostream& out, const Fit& fit) {
  return out << fit.width << "x" << fit.height << " text " << fit.textWidth << "x" << fit.textHeight
             << " buttons " << fit.top << ": " << fit.left1 << " " << fit.left2 << " " << fit.left3;
}

constexpr Fit kTiny{322, 93, 282, 27, 53, 38, 130, 222};
constexpr Fit kShort{512, 193, 472, 127, 153, 228, 320, 412};
constexpr Fit kNormal{572, 243, 532, 177, 203, 288, 380, 472};
constexpr Fit kMedium{572, 343, 532, 277, 303, 288, 380, 472};
constexpr Fit kLong{572, 443, 532, 377, 403, 288, 380, 472};

String Repeated(const std::string& character, int count, const std::string& end = "") {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += character;
  }
  return Utf8(text + end);
}

class Conflict : public testing::Test {
 protected:
  Conflict() { run.BareWindow(); }
  StubRun run;
};

TEST_F(Conflict, LengthInCharactersPicksTheSizeAndTheEndTakesItBack) {
  const struct {
    String text;
    Fit fit;
    int widthLeft = 572;
    int heightLeft = 243;
  } rows[] = {
      {"", kTiny},
      {Repeated("x", 39), kTiny},
      {Repeated("\u65E5", 39), kTiny},
      // Shrunk as a short text, it grows back as a tiny one.
      {Repeated("x", 38, "\n"), kShort, 572 + 190, 243 + 100},
      {Repeated("x", 40), kShort},
      {Repeated("\u00E9", 199), kShort},
      {Repeated("x", 200), kNormal},
      {Repeated("x", 400), kNormal},
      {Repeated("x", 401), kMedium},
      {Repeated("x", 600), kMedium},
      {Repeated("x", 601), kLong},
  };
  for (const auto& row : rows) {
    const Ref<MessageModal> window = MakeWindow<MessageModal>();
    ViewConst::MessageModalStartSize(*window, row.text);
    EXPECT_EQ(FitOf(*window), row.fit) << row.text.Size();
    ViewConst::MessageModalEndSize(*window, row.text);
    EXPECT_EQ(window->Width(), row.widthLeft) << row.text.Size();
    EXPECT_EQ(window->Height(), row.heightLeft) << row.text.Size();
    EXPECT_EQ(window->Btn1()->Left(), 288);
  }
}

TEST_F(Conflict, HiddenButtonsCloseTheRowUpToTheRight) {
  const struct {
    bool visible2, visible3;
    int left1, left2, left3;
  } rows[] = {
      {true, true, 288, 380, 472},
      {false, true, 380, 380, 472},
      // Two on the same place, as it is meant.
      {true, false, 472, 472, 472},
      {false, false, 472, 472, 472},
  };
  for (const auto& row : rows) {
    const Ref<MessageModal> window = MakeWindow<MessageModal>();
    window->Btn2()->SetVisible(row.visible2);
    window->Btn3()->SetVisible(row.visible3);
    ViewConst::MessageModalStartSize(*window, Repeated("x", 300));
    Fit expected = kNormal;
    std::tie(expected.left1, expected.left2, expected.left3) =
        std::tie(row.left1, row.left2, row.left3);
    EXPECT_EQ(FitOf(*window), expected) << row.visible2 << row.visible3;
  }
}

TEST_F(Conflict, QuestionIsAnsweredByItsCaptions) {
  for (const auto& [button, yes] : {std::pair{"Btn2", true}, {"Btn3", false}}) {
    run.desktop.ExpectWindow("Confirmation", [button = button](Window& shown) {
      auto& window = dynamic_cast<MessageModal&>(shown);
      EXPECT_EQ(window.MessageText()->Text().Bytes(), "Go on?");
      EXPECT_FALSE(window.Btn1()->Visible());
      EXPECT_EQ(window.Btn2()->Caption().Bytes(), "Yes");
      EXPECT_TRUE(window.Btn2()->Default() && !window.Btn2()->Cancel());
      EXPECT_EQ(window.Btn3()->Caption().Bytes(), "No");
      EXPECT_TRUE(!window.Btn3()->Default() && window.Btn3()->Cancel());
      EXPECT_EQ(FitOf(window), kTiny);
      ScriptedDesktop::Press(window, button);
    });
    EXPECT_EQ(YesNoDlg("Go on?"), yes);
    EXPECT_EQ(gConflictType, 0);
  }
}

TEST_F(Conflict, EmptyQuestionIsTheUnknownError) {
  run.desktop.ExpectWindow("Confirmation", [](Window& shown) {
    auto& window = dynamic_cast<MessageModal&>(shown);
    EXPECT_EQ(window.MessageText()->Text().Bytes(), "UNKNOWN ERROR. ");
    ScriptedDesktop::Press(window, "Btn2");
  });
  EXPECT_TRUE(YesNoDlg(""));
}

TEST_F(Conflict, ErrorMessageKeepsTheDesignSizeAndClearsItsCode) {
  PoseConflictDialog();  // Nothing is pending, so nothing is shown.
  const struct {
    std::int64_t code;
    const char* text;
    const char* shown;
  } rows[] = {
      {999, "the text", "the text"},
      {999, "", ""},
      {34, "not this", "VOLUME NOT FOUND.\n\nThis volume does not exist: "},
      {39, "", "INSUFFICIENT RAM.\n\nUnable to process picture due to RAM shortage."},
      {7, "not this", "UNKNOWN ERROR. "},
  };
  for (const auto& row : rows) {
    gConflictType = row.code;
    GlobalsVk::gErrorString = row.text;
    run.desktop.ExpectWindow("Error Message", [&row](Window& shown) {
      auto& window = dynamic_cast<MessageModal&>(shown);
      EXPECT_EQ(window.MessageText()->Text().Bytes(), row.shown);
      EXPECT_EQ(FitOf(window), kNormal);
      EXPECT_TRUE(!window.Btn1()->Visible() && !window.Btn2()->Visible());
      EXPECT_TRUE(window.Btn3()->Default() && !window.Btn3()->Cancel());
      EXPECT_FALSE(window.HasPosition());
      ScriptedDesktop::Press(window, "Btn3");
      EXPECT_EQ(window.fBtnName.Bytes(), "OK");
    });
    PoseConflictDialog();
    EXPECT_EQ(gConflictType, 0) << row.code;
  }
}

}  // namespace
}  // namespace zephin::test
