#include "platform/qt/qt_desktop.h"

#include <QApplication>
#include <QWindow>
#include <utility>

#include "platform/framework/application.h"
#include "platform/framework/window.h"
#include "platform/qt/clipboard/session_clipboard.h"
#include "platform/qt/peers/accessibility.h"
#include "platform/qt/peers/answer_keys.h"
#include "platform/qt/peers/window_peer.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/session/folder_dialog.h"
#include "platform/qt/session/session.h"
#include "platform/qt/widgets/look.h"
#include "platform/qt/widgets/message_window.h"

namespace zephin {
namespace {

/// In milliseconds. Displays show a window sooner.
constexpr int kExposePatience = 500;

/// Paints `widget` before it returns. The first time after a window is shown, the display must
/// report it as exposed first; later it may be minimised, and is never exposed.
void PaintNow(WindowPeer& window, QWidget& widget) {
  if (widget.isVisible()) {
    if (window.TakeFirstPaint()) {
      TalkToDisplay(kExposePatience, [&] { return window.windowHandle()->isExposed(); });
    }
    widget.repaint();
    FlushDisplay();
  }
}

/// Explains the kind of a failure to a user.
QString InPlainWords(const String& kind) {
  const QString name = ToQString(kind);
  if (name == QLatin1String("NilObjectException")) {
    return QStringLiteral("something that it needs is missing (%1)").arg(name);
  }
  if (name == QLatin1String("OutOfBoundsException")) {
    return QStringLiteral("a list has fewer entries than it needs (%1)").arg(name);
  }
  if (name == QLatin1String("OutOfMemoryException")) {
    return QStringLiteral("there is not enough memory (%1)").arg(name);
  }
  return QStringLiteral("an error of the kind %1 has occurred").arg(name);
}

}  // namespace

QtDesktop::QtDesktop(std::string programName)
    : programName_(std::move(programName)), argv_{programName_.data(), nullptr} {
  // First of all: the toolkit ends the process if it can't connect to the display.
  EndAlwaysWithStatus0();
  application_ = MakeApplication(argc_, argv_.data());
  // Before the first widget: widgets take fonts and colours when they are made.
  SetUpLook();
  SetUpAccessibility();
  clipboard_ = std::make_unique<SessionClipboard>();
  keys_ = std::make_unique<KeyFilter>();
  application_->installEventFilter(keys_.get());
}

QtDesktop::~QtDesktop() = default;

WindowPeer* QtDesktop::Find(const Window& window) const {
  const auto found = peers_.find(&window);
  return found == peers_.end() ? nullptr : found->second.get();
}

WindowPeer& QtDesktop::FindOrMake(Window& window) {
  auto& peer = peers_[&window];
  if (peer == nullptr) {
    peer = std::make_unique<WindowPeer>(window);
  }
  return *peer;
}

QWidget* QtDesktop::TopWindow() const {
  // A modal window is always on top, and may be a message or the folder dialog.
  if (QWidget* modal = QApplication::activeModalWidget()) {
    return modal;
  }
  for (const auto& [model, peer] : peers_) {
    if (peer->isVisible()) {
      return peer.get();
    }
  }
  return nullptr;
}

QString QtDesktop::MessageTitle() const {
  const Window* titled = nullptr;
  for (const auto& [model, peer] : peers_) {
    // Messages have the main window's title, as the user knows the installer by it.
    if (model->ClosesAsQuit() || titled == nullptr) {
      titled = model;
    }
  }
  return titled == nullptr ? QStringLiteral("Install") : ToQString(titled->Title());
}

void QtDesktop::ShowWindow(Window& window) {
  QWidget* top = TopWindow();  // Before the new window is one of them.
  FindOrMake(window).Appear(top);
}

void QtDesktop::HideWindow(Window& window) {
  if (WindowPeer* peer = Find(window)) {
    peer->Disappear();
  }
}

void QtDesktop::RunModal(Window& window) {
  QWidget* top = TopWindow();
  FindOrMake(window).RunModal(top);
}

void QtDesktop::RefreshWindow(Window& window, Repaint when) {
  WindowPeer* peer = Find(window);
  if (peer == nullptr) {
    return;
  }
  peer->Update();
  // Without `Now` nothing is left to do: the toolkit repaints what Update has changed.
  if (when == Repaint::Now) {
    PaintNow(*peer, *peer);
  }
}

void QtDesktop::RefreshControl(Control& control, Repaint when) {
  WindowPeer* window = control.Owner() == nullptr ? nullptr : Find(*control.Owner());
  ControlPeer* peer = window == nullptr ? nullptr : window->PeerOf(control);
  if (peer == nullptr) {
    return;
  }
  peer->Update();
  if (when == Repaint::Now) {
    PaintNow(*window, peer->Widget());
  } else {
    peer->Widget().update();
  }
}

void QtDesktop::FocusWindow(Window& window) {
  if (WindowPeer* peer = Find(window)) {
    peer->raise();
    peer->activateWindow();
  }
}

void QtDesktop::WindowChanged(Window& window) {
  if (WindowPeer* peer = Find(window)) {
    peer->Update();
  }
}

void QtDesktop::ControlChanged(Control& control) {
  if (WindowPeer* window = Find(*control.Owner())) {
    window->UpdateControl(control);
  }
}

void QtDesktop::ForgetWindow(Window& window) {
  if (auto found = peers_.extract(&window)) {
    found.mapped()->Forget();
    // Not at once: the caller may be a handler of this very window.
    found.mapped().release()->deleteLater();
  }
}

void QtDesktop::ShowMessage(const String& text) {
  MessageWindow(MessageTitle(), ToQString(text), MessageWindow::Sign::Information).Run(TopWindow());
}

Ref<FolderItem> QtDesktop::SelectFolder(const SelectFolderDialog& dialog) {
  return RunFolderDialog(dialog, TopWindow());
}

void QtDesktop::ReportFailure(const String& kind) {
  const QString text =
      QStringLiteral("The installer can't go on: %1.\n\nIt will end now.").arg(InPlainWords(kind));
  MessageWindow(MessageTitle(), text, MessageWindow::Sign::Warning).Run(TopWindow());
}

}  // namespace zephin
