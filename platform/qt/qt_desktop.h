#ifndef PLATFORM_QT_QT_DESKTOP_H_
#define PLATFORM_QT_QT_DESKTOP_H_

#include <array>
#include <map>
#include <memory>
#include <string>

#include "platform/framework/desktop.h"

class QApplication;
class QString;
class QWidget;

namespace zephin {

class KeyFilter;
class SessionClipboard;
class WindowPeer;

/// The user's desktop on an X display: shows the model's windows and controls as widgets of the
/// toolkit. A process has at most one, created before any window. From then on every end of the
/// process has status 0, whatever causes it.
///
/// `qt_desktop.cpp` defines the windows and dialogs, `qt_desktop_session.cpp` what the program asks
/// of the rest of the session, and the function `OpenDesktop`.
class QtDesktop final : public Desktop {
 public:
  /// There must be a display. `programName` identifies the windows to the session.
  explicit QtDesktop(std::string programName);
  ~QtDesktop() override;

  // Windows. The peer of a window is made when the window is first shown, and destroyed when the
  // model is. Calls for a window without a peer are ignored.
  void ShowWindow(Window& window) override;
  void HideWindow(Window& window) override;
  void RunModal(Window& window) override;
  void RefreshWindow(Window& window, Repaint when) override;
  void RefreshControl(Control& control, Repaint when) override;
  void FocusWindow(Window& window) override;
  void WindowChanged(Window& window) override;
  void ControlChanged(Control& control) override;
  void ForgetWindow(Window& window) override;

  // Dialogs. Each appears above the window that the user sees on top, and nests its own event loop.
  void ShowMessage(const String& text) override;
  Ref<FolderItem> SelectFolder(const SelectFolderDialog& dialog) override;
  void ReportFailure(const String& kind) override;

  // The session. Errors of launched programs are not reported.
  String ClipboardText() override;
  void SetClipboardText(const String& text) override;
  void LaunchItem(const FolderItem& item, bool activate) override;
  void OpenAddress(const String& address) override;
  void BringToFront() override;
  void SetMouseCursor(MouseCursor cursor) override;

  // Time and events. `EndRun` hides the windows, hands the clipboard over, and ends the process
  // without destroying anything: handlers further up the stack still use it.
  std::int64_t Ticks() override;
  void LetEventsRun(int milliseconds) override;
  int YieldSlice() const override;
  void RunEventLoop() override;
  [[noreturn]] void EndRun(int status) override;

 private:
  /// Null if the window was never shown.
  WindowPeer* Find(const Window& window) const;
  /// The peer, made if necessary. Valid until `ForgetWindow`.
  WindowPeer& FindOrMake(Window& window);
  /// The window above which a dialog appears; null if no window of the program is visible.
  QWidget* TopWindow() const;
  /// The title of the main window, which messages share; "Install" before there is a window.
  QString MessageTitle() const;

  // The toolkit keeps pointers to the program's arguments.
  std::string programName_;
  int argc_ = 1;
  std::array<char*, 2> argv_{};

  std::unique_ptr<QApplication> application_;
  std::unique_ptr<KeyFilter> keys_;
  std::unique_ptr<SessionClipboard> clipboard_;
  std::map<const Window*, std::unique_ptr<WindowPeer>> peers_;
};

}  // namespace zephin

#endif  // PLATFORM_QT_QT_DESKTOP_H_
