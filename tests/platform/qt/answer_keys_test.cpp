#include "platform/qt/answer_keys.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <functional>
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
    AddButton("Quit");
    AddButton("Cancel");
    AddButton("OK");
    Button("OK")->SetDefault(true);
    Button("Cancel")->SetCancel(true);
    Add<TextArea>("Area", {0, 0, 90, 90})->SetReadOnly(true);
    Add<TextField>("Field", {100, 0, 90, 20});
    Add<HTMLViewer>("Page", {0, 100, 90, 90});
    Add<RadioButton>("Radio", {100, 100, 90, 20});
  }

  void AddButton(const char* name) {
    const Ref<PushButton> button = Add<PushButton>(name, {0, 200, 80, 20});
    button->SetCaption(name);
    button->SetTabIndex(0);
    button->Action = [this](PushButton& each) { pressed += each.Name() + " "; };
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
  struct Row {
    const char* what;
    std::function<void(KeysWindow&)> change;
    const char* byReturn;
    const char* byEscape;
  };
  const std::vector<Row> rows{
      {"hidden", [](KeysWindow& w) { w.Button("Cancel")->SetVisible(false); }, "OK ", ""},
      {"disabled", [](KeysWindow& w) { w.Button("Cancel")->SetEnabled(false); }, "OK ", ""},
      {"none", [](KeysWindow& w) { w.Button("Cancel")->SetCancel(false); }, "OK ", ""},
      {"two", [](KeysWindow& w) { w.Button("OK")->SetCancel(true); }, "OK ", "Cancel "},
      {"default", [](KeysWindow& w) { w.Button("OK")->SetEnabled(false); }, "", "Cancel "},
  };
  for (const Row& row : rows) {
    window_ = MakeWindow<KeysWindow>();
    row.change(*window_);
    WindowPeer peer(*window_);
    peer.show();
    EXPECT_EQ(Type(peer, "Area", Qt::Key_Return), row.byReturn) << row.what;
    EXPECT_EQ(Type(peer, "Area", Qt::Key_Escape), row.byEscape) << row.what;
    EXPECT_TRUE(peer.isVisible()) << row.what;
  }
}

}  // namespace
}  // namespace zephin
