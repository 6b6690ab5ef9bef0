#include "platform/qt/peers/answer_keys.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QKeySequence>
#include <QWidget>

#include "platform/framework/application.h"
#include "platform/qt/peers/window_peer.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/message_window.h"

namespace zephin {
namespace {

/// A shortcut of the model, such as "Cmd+Q", as keys of a PC.
QKeySequence KeysOf(const MenuItem& item) {
  QString keys = ToQString(item.shortcut);
  keys.replace(QLatin1String("Cmd+"), QLatin1String("Ctrl+"));
  return {keys, QKeySequence::PortableText};
}

bool IsQuitShortcut(const QKeyEvent& event) {
  const Ref<MenuBar>& bar = Application::Current().Menus();
  if (bar.IsNil()) {
    return false;
  }
  for (const Menu& menu : bar->menus) {
    for (const MenuItem& item : menu.items) {
      if (item.command == MenuCommand::Quit && !item.shortcut.IsEmpty() &&
          KeysOf(item) == QKeySequence(event.keyCombination())) {
        return true;
      }
    }
  }
  return false;
}

void PressDefault(QDialog& window) {
  if (auto* peer = dynamic_cast<WindowPeer*>(&window)) {
    peer->PressDefault();
  } else {
    window.accept();
  }
}

/// Handles Return and Escape, unless Control or the like is held down. True if it takes the key.
bool Answer(QDialog& window, const QKeyEvent& event) {
  if ((event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) != Qt::NoModifier) {
    return false;
  }
  // The repetitions of a key that is held down do nothing: they would answer the next window too.
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event.isAutoRepeat()) {
        PressDefault(window);
      }
      return true;
    case Qt::Key_Escape:
      if (!event.isAutoRepeat()) {
        window.reject();
      }
      return true;
    default:
      return false;
  }
}

/// The window if it is one of this program's own, else null.
QDialog* OwnWindow(QWidget* window) {
  const bool isOwn = dynamic_cast<WindowPeer*>(window) != nullptr ||
                     dynamic_cast<MessageWindow*>(window) != nullptr;
  return isOwn ? static_cast<QDialog*>(window) : nullptr;
}

}  // namespace

bool KeyFilter::eventFilter(QObject* watched, QEvent* event) {
  // The same key comes to the native window first, which is no widget.
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) {
    return false;
  }
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (IsQuitShortcut(key)) {
    ChooseQuit();
    return true;
  }
  QDialog* window = OwnWindow(static_cast<QWidget*>(watched)->window());
  return window != nullptr && Answer(*window, key);
}

void ChooseQuit() {
  Application::Current().CallHandler([] {
    // All windows are asked, hidden ones too, before anything ends.
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      const auto* peer = dynamic_cast<WindowPeer*>(widget);
      if (peer != nullptr && peer->Model() != nullptr && peer->Model()->Event_CancelClose(true)) {
        return;
      }
    }
    Quit(0);
  });
}

}  // namespace zephin
