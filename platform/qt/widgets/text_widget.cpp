#include "platform/qt/widgets/text_widget.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QTextOption>

namespace zephin {

TextWidget::TextWidget(QWidget* parent) : QWidget(parent) {}

void TextWidget::SetText(const QString& text, const FittedText::Style& style, const QColor& color) {
  text_ = text;
  style_ = style;
  color_ = color;
  if (text != accessibleName()) {
    setAccessibleName(text);
  }
  Fit();
}

void TextWidget::SetPressed(std::function<void(QPoint)> pressed) {
  pressed_ = std::move(pressed);
  // Not StrongFocus: a click follows the link, and leaves the focus where the user works.
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::TabFocus);
}

void TextWidget::Press(QPoint place) {
  if (pressed_) {
    pressed_(place);
  }
}

void TextWidget::Fit() {
  fitted_ = FittedText(text_, style_, size());
  update();
}

void TextWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(isEnabled() ? color_ : palette().color(QPalette::Disabled, QPalette::WindowText));
  fitted_.Draw(painter, QPointF(0, 0));
  if (hasFocus()) {
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.state |= QStyle::State_KeyboardFocusChange;  // Otherwise some styles draw nothing.
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
  }
}

void TextWidget::resizeEvent(QResizeEvent* /*event*/) {
  Fit();
}

void TextWidget::mousePressEvent(QMouseEvent* event) {
  if (IsLink() && event->button() == Qt::LeftButton) {
    Press(event->position().toPoint());
  } else {
    event->ignore();  // The window behind gets it.
  }
}

void TextWidget::keyPressEvent(QKeyEvent* event) {
  if (IsLink() && event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
    Press(QPoint(0, 0));
  } else {
    event->ignore();
  }
}

Qt::TextInteractionFlags ReadOnlyFlags() {
  Qt::TextInteractionFlags flags = Qt::TextSelectableByMouse;
  flags.setFlag(Qt::TextSelectableByKeyboard, QAccessible::isActive());
  return flags;
}

void AlignToScript(QPlainTextEdit& text) {
  // A mixed text would otherwise change sides from paragraph to paragraph.
  QTextOption option = text.document()->defaultTextOption();
  option.setAlignment(text.toPlainText().isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
  text.document()->setDefaultTextOption(option);
}

}  // namespace zephin
