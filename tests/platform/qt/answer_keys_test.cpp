#include "platform/qt/answer_keys.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <functional>
#include <tuple>
#include <vector>

#include "platform/framework/controls.h"
#include "platform/qt/window_peer.h"
#include "tests/support/scripted_desktop.h"

namespace zephin {
namespace {

/// A window with one of each kind of control that could keep a key for itself, and three buttons.
class KeysWindow final : public Window {
 public:
  std::string pressed;

  Ref<PushButton> Button(const char* name) { return Named<PushButton>(name); }

 private:
  void Layout() override {
    SetWidth(300);
    SetHeight(300);
  }

  void CreateControls() override {
    for (const char* name : {"Quit", "Cancel", "OK"}) {
      Add<PushButton>(name, {0, 200, 80, 20})->Action = [this](PushButton& each) {
        pressed += each.Name() + " ";
      };
    }
    Button("OK")->SetDefault(true);
    Button("Cancel")->SetCancel(true);
    Add<TextArea>("Area", {0, 0, 90, 90})->SetReadOnly(true);
    Add<TextField>("Field", {100, 0, 90, 20});
    Add<HTMLViewer>("Page", {0, 100, 90, 90});
    Add<RadioButton>("Radio", {100, 100, 90, 20});
  }
};

class AnswerKeys : public testing::Test {
 protected:
  AnswerKeys() : app_(desktop_, Machine()), window_(MakeWindow<KeysWindow>()) {
    qApp->installEventFilter(&filter_);
  }

  /// The names of the buttons that the key presses when the control has the focus.
  std::string Type(WindowPeer& peer, const char* focus, Qt::Key key, bool held = false) {
    window_->pressed.clear();
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), held);
    QCoreApplication::sendEvent(&peer.PeerOf(*window_->ControlByName(focus))->Widget(), &event);
    return window_->pressed;
  }

  test::ScriptedDesktop desktop_;
  Application app_;
  KeyFilter filter_;
  Ref<KeysWindow> window_;
};

TEST_F(AnswerKeys, ReturnAndEscapeAnswerWhateverHasTheFocus) {
  WindowPeer peer(*window_);
  peer.show();
  for (const char* focus : {"Quit", "Cancel", "OK", "Area", "Field", "Page", "Radio"}) {
    EXPECT_EQ(Type(peer, focus, Qt::Key_Return), "OK ") << focus;
    EXPECT_EQ(Type(peer, focus, Qt::Key_Enter), "OK ") << focus;
    EXPECT_EQ(Type(peer, focus, Qt::Key_Escape), "Cancel ") << focus;
    // Held down in the window before, it must not answer this one.
    EXPECT_EQ(Type(peer, focus, Qt::Key_Return, true), "") << focus;
  }
  EXPECT_TRUE(peer.isVisible());
}

TEST_F(AnswerKeys, ButtonsThatCannotBePressedAreNotAnswered) {
  using Change = std::function<void(KeysWindow&)>;
  const std::vector<std::tuple<Change, const char*, const char*>> rows{
      // what happens to the buttons, what Return presses then, and Escape
      {[](KeysWindow& w) { w.Button("Cancel")->SetVisible(false); }, "OK ", ""},
      {[](KeysWindow& w) { w.Button("Cancel")->SetEnabled(false); }, "OK ", ""},
      {[](KeysWindow& w) { w.Button("Cancel")->SetCancel(false); }, "OK ", ""},
      {[](KeysWindow& w) { w.Button("OK")->SetCancel(true); }, "OK ", "Cancel "},
      {[](KeysWindow& w) { w.Button("OK")->SetEnabled(false); }, "", "Cancel "},
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
