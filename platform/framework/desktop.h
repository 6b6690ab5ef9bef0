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

/// Whether a window's drawing waits for the next event or is done before the call returns.
enum class Repaint { Later, Now };

/// The user's session: all that the program asks of a desktop. The windows and controls that it is
/// given are a model: it shows them, keeps what is shown in step with them, writes what the user
/// changes back with their setters, and calls their handlers through `Application::CallHandler`.
///
/// All calls come from the one thread of the program. A desktop calls handlers only while it is in
/// `RunEventLoop`, `RunModal`, `ShowMessage`, `SelectFolder` or `LetEventsRun`.
class Desktop {
 public:
  Desktop() = default;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;
  virtual ~Desktop() = default;

  // Windows. A window that was never shown may be named in any of these.
  /// Shows the window at its place, with the keyboard focus; one that is shown stays as it is.
  virtual void ShowWindow(Window& window) = 0;
  /// Hides the window, and lets a `RunModal` of it return.
  virtual void HideWindow(Window& window) = 0;
  /// Shows the window above all others of the program and returns when it has been hidden. The
  /// program's other windows take no input meanwhile.
  virtual void RunModal(Window& window) = 0;
  /// Repaints the window. `Now`: before the call returns.
  virtual void RefreshWindow(Window& window, Repaint when) = 0;
  virtual void RefreshControl(Control& control, Repaint when) = 0;
  /// Gives the window the keyboard focus.
  virtual void FocusWindow(Window& window) = 0;
  /// A property of the window, or of one of its controls, is no longer what it was.
  virtual void WindowChanged(Window& window) = 0;
  virtual void ControlChanged(Control& control) = 0;
  /// The window is about to go; nothing may refer to it any more.
  virtual void ForgetWindow(Window& window) = 0;

  // Ready-made dialogs.
  /// A modal message with one button, shown as plain text, letter for letter.
  virtual void ShowMessage(const String& text) = 0;
  /// The dialog for a folder. Nil if the user cancels it.
  virtual Ref<FolderItem> SelectFolder(const SelectFolderDialog& dialog) = 0;
  /// Tells the user that the program has met a failure of this kind and must end.
  virtual void ReportFailure(const String& kind) = 0;

  // The session.
  /// The clipboard's text; empty if it holds none.
  virtual String ClipboardText() = 0;
  /// An empty text leaves an empty text, not what was there before.
  virtual void SetClipboardText(const String& text) = 0;
  /// See `FolderItem::Launch`.
  virtual void LaunchItem(const FolderItem& item, bool activate) = 0;
  /// Opens an address in the user's browser. One that is empty, or that a program would take for an
  /// option of its own, opens nothing.
  virtual void OpenAddress(const String& address) = 0;
  /// Brings the program's windows before those of other programs.
  virtual void BringToFront() = 0;
  /// Over all windows of the program, until the next call.
  virtual void SetMouseCursor(MouseCursor cursor) = 0;

  // Time and events.
  /// Time in sixtieths of a second from any origin; never goes back.
  virtual std::int64_t Ticks() = 0;
  /// Lets pending events run, and waits for more until `milliseconds` have passed. 0: only what is
  /// pending.
  virtual void LetEventsRun(int milliseconds) = 0;
  /// How long the program may work between two looks at the events, in milliseconds. 0: it looks at
  /// each yield.
  virtual int YieldSlice() const = 0;
  /// Runs the program's event loop. Returns only if the session ends it.
  virtual void RunEventLoop() = 0;
  /// Ends the run at once, from any depth of nested loops and handlers. What the clipboard holds
  /// stays there for other programs.
  [[noreturn]] virtual void EndRun(int status) = 0;
};

/// Connects to the desktop of the user's session. Called once, before anything else is asked of it,
/// with the arguments of `main`; the first one names the program to the session, the others are
/// ignored. Null if there is no display; the user then finds the reason on standard error. The
/// build chooses the folder that defines it.
std::unique_ptr<Desktop> OpenDesktop(int argc, char** argv);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_DESKTOP_H_
