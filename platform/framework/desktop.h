#ifndef PLATFORM_FRAMEWORK_DESKTOP_H_
#define PLATFORM_FRAMEWORK_DESKTOP_H_

#include <cstdint>
#include <memory>

#include "platform/framework/ref.h"
#include "platform/framework/string.h"

namespace zephin {

class Control;
class FolderItem;
class SelectFolderDialog;
class Window;

enum class MouseCursor { Arrow, Wait };

/// When a repaint happens: with the next events, or before the call returns.
enum class Repaint { Later, Now };

/// The user's session: everything that the program asks of a desktop. Windows and controls are a
/// model. The desktop shows them, follows their changes, writes the user's changes back with their
/// setters, and calls their handlers through `Application::CallHandler`. See README.md here for how
/// to write one.
///
/// All calls come from the program's only thread. The desktop calls handlers only during
/// `RunEventLoop`, `RunModal`, `ShowMessage`, `SelectFolder` and `LetEventsRun`.
class Desktop {
 public:
  Desktop() = default;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;
  virtual ~Desktop() = default;

  // Windows. Each call accepts a window that was never shown.
  /// Shows the window at its place and gives it the keyboard focus. No effect if it is visible.
  virtual void ShowWindow(Window& window) = 0;
  /// Hides the window and ends its `RunModal`.
  virtual void HideWindow(Window& window) = 0;
  /// Shows the window above all others of the program and returns when it has been hidden. The
  /// program's other windows take no input meanwhile.
  virtual void RunModal(Window& window) = 0;
  virtual void RefreshWindow(Window& window, Repaint when) = 0;
  virtual void RefreshControl(Control& control, Repaint when) = 0;
  /// Gives the window the keyboard focus.
  virtual void FocusWindow(Window& window) = 0;
  /// A property of the window or control was set; the call does not say which one.
  virtual void WindowChanged(Window& window) = 0;
  virtual void ControlChanged(Control& control) = 0;
  /// The window is about to be destroyed: drop every reference to it and its controls.
  virtual void ForgetWindow(Window& window) = 0;

  // Dialogs.
  /// Shows a modal message with one button. The text is plain text.
  virtual void ShowMessage(const String& text) = 0;
  /// Lets the user select an existing folder; nil if the user cancels.
  virtual Ref<FolderItem> SelectFolder(const SelectFolderDialog& dialog) = 0;
  /// Reports to the user that the program must end because of an error of this kind.
  virtual void ReportFailure(const String& kind) = 0;

  // The session.
  /// The clipboard's text; empty if it holds none.
  virtual String ClipboardText() = 0;
  /// Replaces the contents of the clipboard, also by an empty text.
  virtual void SetClipboardText(const String& text) = 0;
  /// See `FolderItem::Launch`.
  virtual void LaunchItem(const FolderItem& item, bool activate) = 0;
  /// Opens an address in the user's browser. Ignores an address that is empty or that a program
  /// would take for an option.
  virtual void OpenAddress(const String& address) = 0;
  /// Raises the program's windows above those of other programs.
  virtual void BringToFront() = 0;
  /// Sets the cursor for all windows of the program until the next call.
  virtual void SetMouseCursor(MouseCursor cursor) = 0;

  // Time and events.
  /// Time in sixtieths of a second since an arbitrary start; it never goes back.
  virtual std::int64_t Ticks() = 0;
  /// Processes pending events, then waits for and processes others until `milliseconds` have
  /// passed. 0: pending events only.
  virtual void LetEventsRun(int milliseconds) = 0;
  /// How long the program may work between two calls of LetEventsRun, in milliseconds. 0: it calls
  /// at each yield.
  virtual int YieldSlice() const = 0;
  /// Runs the program's event loop. Returns only if the session ends it.
  virtual void RunEventLoop() = 0;
  /// Ends the process with this status, from any depth of nested loops and handlers. The
  /// clipboard's text remains available to other programs.
  [[noreturn]] virtual void EndRun(int status) = 0;
};

/// Connects to the desktop of the user's session. Called once, before any other use of the session,
/// with the arguments of `main`: the first names the program, the others are ignored. Null if there
/// is no display; the reason is on standard error then. Defined by the desktop that the build
/// links.
std::unique_ptr<Desktop> OpenDesktop(int argc, char** argv);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_DESKTOP_H_
