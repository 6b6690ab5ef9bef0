#ifndef TESTS_SUPPORT_QUIET_DESKTOP_H_
#define TESTS_SUPPORT_QUIET_DESKTOP_H_

#include <cstdlib>
#include <functional>

#include "platform/framework/desktop.h"

namespace zephin {

/// A desktop without a user, for what needs an application but shows nothing.
class QuietDesktop : public Desktop {
 public:
  std::function<void()> atYield;  ///< Called whenever events may run.
  int slice = 0;

  void ShowWindow(Window& /*window*/) override {}
  void HideWindow(Window& /*window*/) override {}
  void RunModal(Window& /*window*/) override {}
  void RefreshWindow(Window& /*window*/, Repaint /*when*/) override {}
  void RefreshControl(Control& /*control*/, Repaint /*when*/) override {}
  void FocusWindow(Window& /*window*/) override {}
  void WindowChanged(Window& /*window*/) override {}
  void ControlChanged(Control& /*control*/) override {}
  void ForgetWindow(Window& /*window*/) override {}
  void ShowMessage(const String& /*text*/) override {}
  Ref<FolderItem> SelectFolder(const SelectFolderDialog& /*dialog*/) override { return nullptr; }
  void ReportFailure(const String& /*kind*/) override {}
  String ClipboardText() override { return {}; }
  void SetClipboardText(const String& /*text*/) override {}
  void LaunchItem(const FolderItem& /*item*/, bool /*activate*/) override {}
  void OpenAddress(const String& /*address*/) override {}
  void BringToFront() override {}
  void SetMouseCursor(MouseCursor /*cursor*/) override {}
  std::int64_t Ticks() override { return 0; }
  void LetEventsRun(int /*milliseconds*/) override {
    if (atYield) {
      atYield();
    }
  }
  int YieldSlice() const override { return slice; }
  void RunEventLoop() override {}
  [[noreturn]] void EndRun(int status) override { std::_Exit(status); }
};

}  // namespace zephin

#endif  // TESTS_SUPPORT_QUIET_DESKTOP_H_
