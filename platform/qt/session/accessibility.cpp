#include "platform/qt/session/accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>

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

/// A radio button. The toolkit's own interface gives the role of a check box to one that isn't in a
/// group of the toolkit.
class AccessibleRadio final : public QAccessibleWidget {
 public:
  explicit AccessibleRadio(RadioWidget* radio)
      : QAccessibleWidget(radio, QAccessible::RadioButton), radio_(radio) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = radio_->isChecked();
    return state;
  }

  QStringList actionNames() const override {
    return QStringList(toggleAction()) + QAccessibleWidget::actionNames();
  }

  void doAction(const QString& action) override {
    if (action == toggleAction()) {
      radio_->setChecked(true);
    } else {
      QAccessibleWidget::doAction(action);
    }
  }

 private:
  RadioWidget* radio_;
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
  if (auto* text = dynamic_cast<TextWidget*>(object)) {
    if (text->IsLink()) {
      return new AccessibleLink(text);
    }
    return new QAccessibleWidget(text, QAccessible::StaticText);
  }
  if (auto* radio = dynamic_cast<RadioWidget*>(object)) {
    return new AccessibleRadio(radio);
  }
  if (auto* picture = dynamic_cast<PictureWidget*>(object)) {
    return new QAccessibleWidget(picture, QAccessible::Graphic);
  }
  if (auto* message = dynamic_cast<MessageWindow*>(object)) {
    return new QAccessibleWidget(message, QAccessible::AlertMessage);
  }
  return nullptr;
}

}  // namespace

void SetUpAccessibility() {
  QAccessible::installFactory(MakeInterface);
}

}  // namespace zephin
