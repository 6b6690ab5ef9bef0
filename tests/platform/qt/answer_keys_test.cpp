#include "platform/qt/peers/answer_keys.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QTest>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "dialogs/pages.h"
#include "platform/qt/peers/window_peer.h"
#include "tests/support/scripted_desktop.h"

namespace zephin {
namespace {

/// A page with one control of each kind that handles Return or Escape itself.
class KeysWindow final : public THtmlMessageDlg {
  void CreateControls() override {
    THtmlMessageDlg::CreateControls();
    Add<TextArea>("Area", {0, 0, 90, 90})->SetReadOnly(true);
    Add<TextField>("Field", {100, 0, 90, 20});
    Add<RadioButton>("Radio", {100, 100, 90, 20});
  }
};

class AnswerKeys : public testing::Test {
 protected:
  AnswerKeys() : app_(desktop_, Machine()), window_(MakeWindow<KeysWindow>()) {
    qApp->installEventFilter(&filter_);
  }

  /// Sends the key to the control and returns the name of the button that it presses, or nothing.
  String Type(WindowPeer& peer, const char* focus, Qt::Key key, bool held = false) {
    window_->fBtnName = "";
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), held);
    QCoreApplication::sendEvent(&peer.PeerOf(*window_->ControlByName(focus))->Widget(), &event);
    return window_->fBtnName;
  }

  QPushButton& ButtonOf(const WindowPeer& peer, const char* name) const {
    return static_cast<QPushButton&>(peer.PeerOf(*window_->ControlByName(name))->Widget());
  }

  test::ScriptedDesktop desktop_;
  Application app_;
  KeyFilter filter_;
  Ref<KeysWindow> window_;
};

TEST_F(AnswerKeys, ReturnPressesTheFocusedButtonOrTheDefaultOneAndEscapeTheCancelButton) {
  WindowPeer peer(*window_);
  peer.Appear(nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&peer));
  for (const char* focus : {"QuitBtn", "ContinueBtn", "MyHTMLViewer", "Area", "Field", "Radio"}) {
    QWidget& widget = peer.PeerOf(*window_->ControlByName(focus))->Widget();
    widget.setFocusPolicy(Qt::StrongFocus);
    widget.setFocus();
    const char* answering = focus == std::string("QuitBtn") ? "QuitBtn" : "ContinueBtn";
    for (const char* button : {"QuitBtn", "ContinueBtn"}) {
      // The drawing shows which button is the default one.
      EXPECT_EQ(ButtonOf(peer, button).isDefault(), button == std::string(answering)) << focus;
    }
    EXPECT_EQ(Type(peer, focus, Qt::Key_Return), answering) << focus;
    EXPECT_EQ(Type(peer, focus, Qt::Key_Enter), answering) << focus;
    EXPECT_EQ(Type(peer, focus, Qt::Key_Escape), "QuitBtn") << focus;
    // A key that is held down since the previous window is ignored.
    EXPECT_EQ(Type(peer, focus, Qt::Key_Return, true), "") << focus;
  }
  EXPECT_TRUE(peer.isVisible());
}

TEST_F(AnswerKeys, ButtonThatIsHiddenWhileItHasTheFocusPassesItToNoOtherButton) {
  WindowPeer peer(*window_);
  peer.Appear(nullptr);
  ASSERT_EQ(peer.focusWidget(), &ButtonOf(peer, "ContinueBtn"));
  window_->ContinueBtn()->SetEnabled(false);
  peer.UpdateControl(*window_->ContinueBtn());
  EXPECT_EQ(peer.focusWidget(), &peer);
  EXPECT_EQ(Type(peer, "Area", Qt::Key_Return), "");
}

TEST_F(AnswerKeys, ButtonsThatCannotBePressedAreNotAnswered) {
  using Change = std::function<void(KeysWindow&)>;
  const std::vector<std::tuple<Change, const char*, const char*>> rows{
      // change of the buttons, the button that Return presses then, the one that Escape presses
      {[](KeysWindow& w) { w.QuitBtn()->SetVisible(false); }, "ContinueBtn", ""},
      {[](KeysWindow& w) { w.QuitBtn()->SetEnabled(false); }, "ContinueBtn", ""},
      {[](KeysWindow& w) { w.QuitBtn()->SetCancel(false); }, "ContinueBtn", ""},
      {[](KeysWindow& w) { w.ContinueBtn()->SetCancel(true); }, "ContinueBtn", "ContinueBtn"},
      {[](KeysWindow& w) { w.ContinueBtn()->SetEnabled(false); }, "", "QuitBtn"},
  };
  for (const auto& [change, byReturn, byEscape] : rows) {
    window_ = MakeWindow<KeysWindow>();
    change(*window_);
    WindowPeer peer(*window_);
    peer.show();
    EXPECT_EQ(Type(peer, "Area", Qt::Key_Return), byReturn);
    EXPECT_EQ(Type(peer, "Area", Qt::Key_Escape), byEscape);
    EXPECT_TRUE(peer.isVisible());
  }
}

}  // namespace
}  // namespace zephin
