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

/// Version data of a program. The framework keeps it and does not use it.
struct ApplicationVersion {
  int major = 0;
  int minor = 0;
  int bug = 0;
  std::string text = {};
};

/// The application object of the process: it holds the desktop and the facts of the machine, and
/// calls handlers safely. It is the current application from its construction to its destruction.
class Application {
 public:
  /// `desktop` must outlive the application. Throws std::logic_error if an application exists.
  Application(Desktop& desktop, Machine machine);
  virtual ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// The current application. Throws std::logic_error if there is none.
  static Application& Current();
  static bool Exists();

  Desktop& Session() { return desktop_; }
  const Machine& Facts() const { return machine_; }

  /// The file of the running program; nil if the machine does not know it.
  Ref<FolderItem> ExecutableFile() const;
  /// Processes events for up to `milliseconds`.
  void DoEvents(int milliseconds);
  /// Sets the cursor for all windows; `MouseCursor::Arrow` is the normal one.
  void SetMouseCursor(MouseCursor cursor);

  /// Called once, before the first window is made.
  virtual void Event_Open() {}

  const ApplicationVersion& Version() const { return version_; }
  void SetVersion(ApplicationVersion version) { version_ = std::move(version); }
  /// The menu bar whose shortcuts work in all windows; nil: none.
  const Ref<MenuBar>& Menus() const { return menuBar_; }
  void SetMenuBar(Ref<MenuBar> menuBar) { menuBar_ = std::move(menuBar); }

  /// Calls a handler on behalf of the desktop. A Quit in it ends the run with its status. Any other
  /// exception is reported to the user by its kind and ends the run with status 0.
  void CallHandler(const std::function<void()>& handler);

 private:
  Desktop& desktop_;
  Machine machine_;
  ApplicationVersion version_;
  Ref<MenuBar> menuBar_;
};

/// Ends the run with this status, from any depth of calls. Never returns.
[[noreturn]] void Quit(int status);

/// Shows a plain modal message with one button and returns when the user has closed it.
void MsgBox(const String& text);

/// Opens the address in the user's browser. Fails silently.
void ShowURL(const String& address);

/// Time in sixtieths of a second since an arbitrary start; it never goes back.
std::int64_t Ticks();

/// Called by loops that do work. It reads a coarse clock and processes events only if the desktop's
/// time slice has passed, so that it may be called millions of times a second. Without an
/// application object it does nothing, so that pure functions may call it.
void RuntimeBackgroundTask();

/// Called by loops that only wait. It processes events and sleeps until the next event or for about
/// one tick, so that the processor is free for the processes that the loop waits for.
void WaitingBackgroundTask();

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_APPLICATION_H_
