#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <tuple>

#include <unistd.h>

#include "platform/framework/application.h"
#include "platform/framework/launcher.h"
#include "platform/qt/clipboard/session_clipboard.h"
#include "platform/qt/peers/answer_keys.h"
#include "platform/qt/peers/window_peer.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/session/font_libraries.h"
#include "platform/qt/session/session.h"

namespace zephin {
namespace {

constexpr int kYieldSlice = 10;  // In milliseconds.
constexpr std::int64_t kTicksPerSecond = 60;
constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

constexpr const char* kNoDisplay =
    "This installer needs a desktop: there is no display to show its window on.\n";
constexpr const char* kNoXwayland =
    "This installer needs a desktop with an X server: this Wayland session has none. "
    "XWayland provides it.\n";

}  // namespace

std::unique_ptr<Desktop> OpenDesktop(int argc, char** argv) {
  if (!DisplayIsThere()) {
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    std::fputs(wayland == nullptr || *wayland == '\0' ? kNoDisplay : kNoXwayland, stderr);
    return nullptr;
  }
  UseNewerFontLibraries(argv);
  return std::make_unique<QtDesktop>(argc > 0 ? argv[0] : "Setup");
}

String QtDesktop::ClipboardText() {
  return clipboard_->Text();
}

void QtDesktop::SetClipboardText(const String& text) {
  clipboard_->SetText(text);
}

void QtDesktop::LaunchItem(const FolderItem& item, bool /*activate*/) {
  const Command command =
      CommandToOpen(item.NativePath().Bytes(), Application::Current().Facts().helpersFolder);
  if (!command.words.empty()) {
    std::ignore = StartDetached(command);  // Launching reports no errors.
  }
}

void QtDesktop::OpenAddress(const String& address) {
  const std::string utf8 = ToQString(address).toUtf8().toStdString();
  // The opener would read a leading hyphen as an option.
  if (utf8.empty() || utf8.front() == '-') {
    return;
  }
  // Debian's name for the default browser helps where the desktop's opener is not installed.
  for (const char* opener : {"xdg-open", "x-www-browser"}) {
    if (StartDetached({{opener, utf8}, ""})) {
      return;
    }
  }
}

void QtDesktop::BringToFront() {
  if (QWidget* top = TopWindow()) {
    top->raise();
    top->activateWindow();
  }
}

void QtDesktop::SetMouseCursor(MouseCursor cursor) {
  // Cursors stack up, and each must be restored once.
  const bool waits = QGuiApplication::overrideCursor() != nullptr;
  if (cursor == MouseCursor::Wait && !waits) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  } else if (cursor == MouseCursor::Arrow && waits) {
    QGuiApplication::restoreOverrideCursor();
  }
  FlushDisplay();  // The caller may work for long before it handles events again.
}

std::int64_t QtDesktop::Ticks() {
  timespec now{};
  // Not the time of day, which the user or the network may set back during an install.
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * kTicksPerSecond + now.tv_nsec * kTicksPerSecond / kNanosecondsPerSecond;
}

void QtDesktop::LetEventsRun(int milliseconds) {
  // At least once, also with no time to wait.
  QCoreApplication::processEvents();
  if (milliseconds > 0) {
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(milliseconds);
    loop.exec();
  }
}

int QtDesktop::YieldSlice() const {
  return kYieldSlice;
}

void QtDesktop::RunEventLoop() {
  QApplication::exec();
}

void QtDesktop::EndRun(int status) {
  // The hand-over may take some time, in which no dead window may be visible.
  for (const auto& [model, peer] : peers_) {
    peer->hide();
  }
  clipboard_->HandOver(Application::Current().Facts().helpersFolder);
  // No destructors: this may be called from within handlers of the objects that they would destroy.
  std::fflush(nullptr);
  _exit(status);
}

}  // namespace zephin
