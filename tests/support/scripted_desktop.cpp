#include "tests/support/scripted_desktop.h"

#include <gtest/gtest.h>

#include "platform/expander/expander.h"
#include "platform/framework/controls.h"
#include "platform/framework/session.h"

namespace zephin::test {

ScriptedDesktop::~ScriptedDesktop() {
  for (const Answer& left : answers_) {
    ADD_FAILURE() << "never shown: " << left.name;
  }
}

void ScriptedDesktop::Press(Window& window, const std::string& button) {
  const Ref<PushButton> control = RefCast<PushButton>(window.ControlByName(button));
  if (control.IsNil() || !control->Visible() || !control->Enabled()) {
    ADD_FAILURE() << "no button to press: " << button << " in " << window.Title().Bytes();
    throw RunEnded{-1};
  }
  Application::Current().CallHandler([&control] { control->Action(*control); });
}

ScriptedDesktop::Answer ScriptedDesktop::Take(Kind kind, const std::string& shown) {
  if (answers_.empty() || answers_.front().kind != kind) {
    ADD_FAILURE() << "no answer for: " << shown
                  << (answers_.empty() ? "" : "; the next one is for: " + answers_.front().name);
    answers_.clear();
    throw RunEnded{-1};
  }
  Answer answer = std::move(answers_.front());
  answers_.pop_front();
  return answer;
}

void ScriptedDesktop::RunModal(Window& window) {
  if (!agreedFolder_.empty()) {
    reported.push_back(window.Title().Bytes());
    for (const Ref<Control>& control : window.Controls()) {
      const Ref<PushButton> button = RefCast<PushButton>(control);
      if (!button.IsNil() && button->Default()) {
        Press(window, button->Name());
        return;
      }
    }
  }
  const Answer answer = Take(Kind::Window, "window " + window.Title().Bytes());
  EXPECT_EQ(answer.name, window.Title().Bytes());
  answer.act(window);
  if (window.Visible()) {
    ADD_FAILURE() << "still open after its answer: " << window.Title().Bytes();
    throw RunEnded{-1};
  }
}

void ScriptedDesktop::ShowMessage(const String& text) {
  if (!agreedFolder_.empty()) {
    reported.push_back(text.Bytes());
    return;
  }
  EXPECT_EQ(Take(Kind::Message, "message " + text.Bytes()).name, text.Bytes());
}

Ref<FolderItem> ScriptedDesktop::SelectFolder(const SelectFolderDialog& dialog) {
  if (!agreedFolder_.empty()) {
    return MakeRef<FolderItem>(agreedFolder_);
  }
  const Answer answer = Take(Kind::FolderDialog, "folder dialog " + dialog.Title().Bytes());
  if (onFolderDialog) {
    onFolderDialog(dialog);
  }
  return answer.name.empty() ? nullptr : MakeRef<FolderItem>(answer.name);
}

void ScriptedDesktop::LaunchItem(const FolderItem& item, bool /*activate*/) {
  const std::string path = item.NativePath().Bytes();
  launched.push_back(path);
  if (onLaunch) {
    onLaunch(path);
  }
  if (path.ends_with(".zip")) {
    (void)expander::ExpandBeside(path);
  }
}

std::int64_t ScriptedDesktop::Ticks() {
  clockWasRead_ = true;
  return milliseconds * 60 / 1000;
}

void ScriptedDesktop::LetEventsRun(int waitMilliseconds) {
  if (waitMilliseconds > 0) {
    milliseconds += waitMilliseconds;
  } else if (clockWasRead_) {
    // A loop that reads the clock and yields is waiting, so the clock advances by more than a tick.
    // A loop that only yields is working.
    milliseconds += 17;
  }
  clockWasRead_ = false;
  while (!timed_.empty() && timed_.begin()->first <= milliseconds) {
    const std::function<void()> act = std::move(timed_.begin()->second);
    timed_.erase(timed_.begin());
    act();
  }
}

void ScriptedDesktop::RunEventLoop() {
  while (!eventLoop_.empty()) {
    const std::function<void()> act = std::move(eventLoop_.front());
    eventLoop_.pop_front();
    act();
  }
  throw RunEnded{-1};
}

}  // namespace zephin::test
