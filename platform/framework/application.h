#ifndef PLATFORM_FRAMEWORK_APPLICATION_H_
#define PLATFORM_FRAMEWORK_APPLICATION_H_

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "platform/framework/desktop.h"
#include "platform/framework/folder_item.h"
#include "platform/framework/machine.h"
#include "platform/framework/menu.h"

namespace zephin {

/// Version data of a program.
struct ApplicationVersion {
  int major = 0;
  int minor = 0;
  int bug = 0;
  std::string text = {};
};

/// The one application object of the process: the desktop and the machine that it runs on, and the
/// boundary at which handlers are called. It is current from its construction to its destruction.
class Application {
 public:
  /// Both must outlive the application; there must be no other one.
  Application(Desktop& desktop, Machine machine);
  virtual ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// The current one. There must be one.
  static Application& Current();
  /// Whether there is one.
  static bool Exists();

  Desktop& Session() { return desktop_; }
  const Machine& Facts() const { return machine_; }

  /// The running program's file; nil if the machine doesn't say.
  Ref<FolderItem> ExecutableFile() const;
  /// Lets events run for up to `milliseconds`.
  void DoEvents(int milliseconds);
  /// Over all windows; `MouseCursor::Arrow` is the usual one.
  void SetMouseCursor(MouseCursor cursor);

  /// Called once, before the first window is made.
  virtual void Event_Open() {}

  const ApplicationVersion& Version() const { return version_; }
  void SetVersion(ApplicationVersion version) { version_ = std::move(version); }
  const Ref<MenuBar>& Menus() const { return menuBar_; }
  void SetMenuBar(Ref<MenuBar> menuBar) { menuBar_ = std::move(menuBar); }

  /// Calls a handler from the outside. A Quit in it ends the run at once; anything that it raises
  /// is reported to the user by its kind and then ends the run with status 0.
  void CallHandler(const std::function<void()>& handler);

 private:
  Desktop& desktop_;
  Machine machine_;
  ApplicationVersion version_;
  Ref<MenuBar> menuBar_;
};

/// Ends the run with that status from wherever it is called; never returns.
[[noreturn]] void Quit(int status);

/// Shows a plain modal message with one button.
void MsgBox(const String& text);

/// Opens the address in the user's browser.
void ShowURL(const String& address);

/// Sixtieths of a second from any origin.
std::int64_t Ticks();

/// A loop that works yields here: a look at a coarse clock, and only when the desktop's slice has
/// passed are events let run. May be called millions of times a second. Without an application
/// object it does nothing, so that pure functions may yield.
void RuntimeBackgroundTask();

/// A loop that only waits yields here: it lets events run and sleeps until one comes or the next
/// tick is near, so that the machine is left to the processes that are waited for.
void WaitingBackgroundTask();

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_APPLICATION_H_
