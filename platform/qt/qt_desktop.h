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

/// The user's desktop on an X display: the model's windows and controls as widgets of the toolkit.
/// There is one in a process, made before any window. From its making on every end of the process
/// has status 0, whatever ends it.
class QtDesktop final : public Desktop {
 public:
  /// Whether there is a display to make it on.
  static bool DisplayIsThere();

  /// The arguments are those of `main`. The first one names the windows for the session; no other
  /// is looked at. There must be a display.
  QtDesktop(int argc, char** argv);
  ~QtDesktop() override;

  void ShowWindow(Window& window) override;
  void HideWindow(Window& window) override;
  void RunModal(Window& window) override;
  void RefreshWindow(Window& window, Repaint when) override;
  void RefreshControl(Control& control, Repaint when) override;
  void FocusWindow(Window& window) override;
  void WindowChanged(Window& window) override;
  void ControlChanged(Control& control) override;
  void ForgetWindow(Window& window) override;

  void ShowMessage(const String& text) override;
  Ref<FolderItem> SelectFolder(const SelectFolderDialog& dialog) override;
  void ReportFailure(const String& kind) override;

  String ClipboardText() override;
  void SetClipboardText(const String& text) override;
  void LaunchItem(const FolderItem& item, bool activate) override;
  void OpenAddress(const String& address) override;
  void BringToFront() override;
  void SetMouseCursor(MouseCursor cursor) override;

  std::int64_t Ticks() override;
  void LetEventsRun(int milliseconds) override;
  int YieldSlice() const override;
  void RunEventLoop() override;
  [[noreturn]] void EndRun(int status) override;

 private:
  /// Null if the window was never shown.
  WindowPeer* Find(const Window& window) const;
  WindowPeer& FindOrMake(Window& window);
  /// The window above which a dialog appears; null if none of the program's can be seen.
  QWidget* TopWindow() const;
  QString MessageTitle() const;

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
