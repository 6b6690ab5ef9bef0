#ifndef TESTS_SUPPORT_SCRIPTED_DESKTOP_H_
#define TESTS_SUPPORT_SCRIPTED_DESKTOP_H_

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/framework/application.h"
#include "platform/framework/window.h"
#include "tests/support/quiet_desktop.h"

namespace zephin::test {

/// Thrown by EndRun in place of the end of the process.
struct RunEnded {
  int status;
};

/// A desktop without a screen, whose user follows a script: each modal window, message and folder
/// dialog takes the next answer of a queue, which must be meant for it. A missing answer fails the
/// test at once, and an answer left over fails it at the end. The clock is virtual and advances
/// only while the program waits. Archives are expanded by the real expander; other launches are
/// only recorded.
class ScriptedDesktop : public QuietDesktop {
 public:
  using WindowAnswer = std::function<void(Window&)>;

  ~ScriptedDesktop() override;

  // The script.
  /// The next modal window has that title. `answer` receives it and must hide it.
  void ExpectWindow(const std::string& title, WindowAnswer answer) {
    answers_.push_back({Kind::Window, title, std::move(answer)});
  }
  /// The same, answered by pressing the button of that name.
  void ExpectWindow(const std::string& title, const std::string& buttonToPress) {
    ExpectWindow(title, [buttonToPress](Window& window) { Press(window, buttonToPress); });
  }
  /// The next message has exactly that text.
  void ExpectMessage(const std::string& text) { answers_.push_back({Kind::Message, text, {}}); }
  /// The next folder dialog is answered with that path; an empty one cancels it.
  void ExpectFolderDialog(const std::string& path) {
    answers_.push_back({Kind::FolderDialog, path, {}});
  }
  /// Calls `act` after that delay on the virtual clock, in milliseconds.
  void After(std::int64_t delay, std::function<void()> act) {
    timed_.emplace(milliseconds + delay, std::move(act));
  }
  /// What the user does in the main event loop, in order. When all is done the run ends with
  /// status -1.
  void InEventLoop(std::function<void()> act) { eventLoop_.push_back(std::move(act)); }
  /// From now on the user presses the default button of each window, closes each message and
  /// chooses `folder` in the folder dialog. The queue is not used.
  void AgreeToAll(const std::string& folder) { agreedFolder_ = folder; }
  /// Called after each launch has been recorded and before an archive is expanded.
  std::function<void(const std::string& path)> onLaunch;
  /// Looks at a folder dialog before it is answered.
  std::function<void(const SelectFolderDialog&)> onFolderDialog;

  // What the program did.
  std::vector<std::string> launched;
  std::vector<std::string> opened;
  std::vector<std::string> reported;  ///< Messages and window titles since AgreeToAll.
  std::vector<std::string> failures;  ///< Kinds of failure that were reported.
  std::string clipboard;
  MouseCursor cursor = MouseCursor::Arrow;
  int bringToFrontCalls = 0;
  std::int64_t milliseconds = 0;  ///< The virtual clock.

  // The user's input.
  /// Presses the button. Fails the test if it is hidden, disabled or missing.
  static void Press(Window& window, const std::string& button);
  /// The first window that was shown, which is the main one. It must exist.
  Window& Main() const { return *main_; }
  void PressInMain(const std::string& button) const { Press(Main(), button); }

  void ShowWindow(Window& window) override { main_ = main_ == nullptr ? &window : main_; }
  void RunModal(Window& window) override;
  void ForgetWindow(Window& window) override { main_ = main_ == &window ? nullptr : main_; }
  void ShowMessage(const String& text) override;
  Ref<FolderItem> SelectFolder(const SelectFolderDialog& dialog) override;
  void ReportFailure(const String& kind) override { failures.push_back(kind.Bytes()); }
  String ClipboardText() override { return Utf8(clipboard); }
  void SetClipboardText(const String& text) override { clipboard = text.Bytes(); }
  void LaunchItem(const FolderItem& item, bool activate) override;
  void OpenAddress(const String& address) override { opened.push_back(address.Bytes()); }
  void BringToFront() override { ++bringToFrontCalls; }
  void SetMouseCursor(MouseCursor newCursor) override { cursor = newCursor; }
  std::int64_t Ticks() override;
  void LetEventsRun(int waitMilliseconds) override;
  void RunEventLoop() override;
  [[noreturn]] void EndRun(int status) override { throw RunEnded{status}; }

 private:
  enum class Kind { Window, Message, FolderDialog };
  struct Answer {
    Kind kind;
    std::string name;  ///< Title, text, or the path to choose.
    WindowAnswer act;
  };
  /// The next answer, which must be of that kind. Otherwise fails the test and ends the run.
  Answer Take(Kind kind, const std::string& shown);

  std::deque<Answer> answers_;
  std::multimap<std::int64_t, std::function<void()>> timed_;
  std::deque<std::function<void()>> eventLoop_;
  std::string agreedFolder_;  ///< Empty: the user answers from the queue.
  Window* main_ = nullptr;
  bool clockWasRead_ = false;
};

}  // namespace zephin::test

#endif  // TESTS_SUPPORT_SCRIPTED_DESKTOP_H_
