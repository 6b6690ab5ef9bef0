#include "platform/qt/peers/answer_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QWidget>

#include "platform/framework/application.h"
#include "platform/qt/peers/window_peer.h"
#include "platform/qt/qt_string.h"

namespace zephin {
namespace {

/// The keys of a shortcut such as "Cmd+Q".
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

/// Return and Escape without Control and the like. Takes a key that is held down but does nothing
/// for it, so that it doesn't answer the next window too.
bool Answer(AnswersKeys& window, const QKeyEvent& event) {
  if ((event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) != Qt::NoModifier) {
    return false;
  }
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event.isAutoRepeat()) {
        window.PressDefault();
      }
      return true;
    case Qt::Key_Escape:
      if (!event.isAutoRepeat()) {
        window.PressCancel();
      }
      return true;
    default:
      return false;
  }
}

}  // namespace

bool KeyFilter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) {
    return false;
  }
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (IsQuitShortcut(key)) {
    ChooseQuit();
    return true;
  }
  auto* window = dynamic_cast<AnswersKeys*>(static_cast<QWidget*>(watched)->window());
  return window != nullptr && Answer(*window, key);
}

void ChooseQuit() {
  Application::Current().CallHandler([] {
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
