#include "platform/qt/peers/accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/framework/window.h"
#include "platform/qt/peers/window_peer.h"
#include "platform/qt/widgets/caption_buttons.h"
#include "platform/qt/widgets/message_window.h"
#include "platform/qt/widgets/picture_widget.h"
#include "platform/qt/widgets/text_widget.h"

namespace zephin {
namespace {

/// A link. Its first action presses it.
class AccessibleLink final : public QAccessibleWidget {
 public:
  explicit AccessibleLink(TextWidget* link)
      : QAccessibleWidget(link, QAccessible::Link), link_(link) {}

  QStringList actionNames() const override {
    return QStringList(pressAction()) + QAccessibleWidget::actionNames();
  }

  void doAction(const QString& action) override {
    if (action == pressAction()) {
      link_->Press(QPoint(0, 0));
    } else {
      QAccessibleWidget::doAction(action);
    }
  }

 private:
  TextWidget* link_;
};

/// A radio button or a check box. The toolkit's own interface leaves the part of the row behind the
/// caption out of its rectangle, and takes a radio button outside its own groups for a check box.
class AccessibleChoice final : public QAccessibleWidget {
 public:
  AccessibleChoice(QAbstractButton* button, QAccessible::Role role)
      : QAccessibleWidget(button, role), button_(button) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = button_->isChecked();
    return state;
  }

  QStringList actionNames() const override {
    return QStringList(toggleAction()) + QAccessibleWidget::actionNames();
  }

  void doAction(const QString& action) override {
    if (action == toggleAction()) {
      button_->setChecked(role() == QAccessible::RadioButton || !button_->isChecked());
    } else {
      QAccessibleWidget::doAction(action);
    }
  }

 private:
  QAbstractButton* button_;
};

/// Only the main window closes as the Quit menu item does; the others are dialogs.
bool IsMainWindow(const WindowPeer& window) {
  return window.Model() != nullptr && window.Model()->ClosesAsQuit();
}

/// The toolkit owns the interfaces. Null lets it make its own.
QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
  if (auto* text = dynamic_cast<TextWidget*>(object)) {
    if (text->IsLink()) {
      return new AccessibleLink(text);
    }
    return new QAccessibleWidget(text, QAccessible::StaticText);
  }
  if (auto* radio = dynamic_cast<RadioWidget*>(object)) {
    return new AccessibleChoice(radio, QAccessible::RadioButton);
  }
  if (auto* box = dynamic_cast<CheckWidget*>(object)) {
    return new AccessibleChoice(box, QAccessible::CheckBox);
  }
  if (auto* picture = dynamic_cast<PictureWidget*>(object)) {
    return new QAccessibleWidget(picture, QAccessible::Graphic);
  }
  if (auto* message = dynamic_cast<MessageWindow*>(object)) {
    return new QAccessibleWidget(message, QAccessible::AlertMessage);
  }
  auto* window = dynamic_cast<WindowPeer*>(object);
  if (window != nullptr && IsMainWindow(*window)) {
    return new QAccessibleWidget(window, QAccessible::Window);
  }
  return nullptr;
}

}  // namespace

void SetUpAccessibility() {
  QAccessible::installFactory(MakeInterface);
}

}  // namespace zephin
