#include "tests/support/scripted_desktop.h"

#include <gtest/gtest.h>

#include "platform/expander/expander.h"
#include "platform/framework/controls.h"
#include "platform/framework/select_folder_dialog.h"

namespace zephin::test {
namespace {

constexpr std::int64_t kMillisecondsPerTick = 17;  // A tick has passed for certain.

}  // namespace

ScriptedDesktop::~ScriptedDesktop() {
  for (const Answer& left : answers_) {
    ADD_FAILURE() << "never shown: " << left.name;
  }
}

void ScriptedDesktop::ExpectWindow(const std::string& title, WindowAnswer answer) {
  answers_.push_back({Kind::Window, title, std::move(answer)});
}

void ScriptedDesktop::ExpectWindow(const std::string& title, const std::string& buttonToPress) {
  ExpectWindow(title, [buttonToPress](Window& window) { Press(window, buttonToPress); });
}

void ScriptedDesktop::ExpectMessage(const std::string& text) {
  answers_.push_back({Kind::Message, text, {}});
}

void ScriptedDesktop::ExpectFolderDialog(const std::string& path) {
  answers_.push_back({Kind::FolderDialog, path, {}});
}

void ScriptedDesktop::After(std::int64_t delay, std::function<void()> act) {
  timed_.emplace(milliseconds + delay, std::move(act));
}

bool ScriptedDesktop::IsShown(const Window& window) const {
  const auto found = shown_.find(&window);
  return found != shown_.end() && found->second;
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

void ScriptedDesktop::ShowWindow(Window& window) {
  shown_[&window] = true;
  main_ = main_ == nullptr ? &window : main_;
}

void ScriptedDesktop::ForgetWindow(Window& window) {
  shown_.erase(&window);
  main_ = main_ == &window ? nullptr : main_;
}

void ScriptedDesktop::RunModal(Window& window) {
  shown_[&window] = true;
  if (!agreedFolder_.empty()) {
    told.push_back(window.Title().Bytes());
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
    told.push_back(text.Bytes());
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
  if (path.ends_with(".zip") && expansion_ == Expansion::BeforeLaunchReturns) {
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
    // A loop that reads the clock and yields is waiting; one that only yields is at work.
    milliseconds += kMillisecondsPerTick;
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

void ScriptedDesktop::EndRun(int status) {
  throw RunEnded{status};
}

}  // namespace zephin::test
