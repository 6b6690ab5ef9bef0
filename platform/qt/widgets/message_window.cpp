#include "platform/qt/widgets/message_window.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/caption_buttons.h"
#include "platform/qt/widgets/look.h"
#include "platform/qt/widgets/placement.h"
#include "platform/qt/widgets/text_widget.h"

namespace zephin {
namespace {

// In points.
constexpr int kMargin = 20;
constexpr int kWidest = 420;
constexpr int kNarrowest = 240;
constexpr QSize kButtonSize(80, 22);
constexpr QSize kSignSize(32, 32);

/// In letters. A longer text scrolls, since measuring it takes long.
constexpr qsizetype kLongestUnscrolled = 4000;

}  // namespace

MessageWindow::MessageWindow(const QString& title, const QString& text, Sign sign)
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint) {
  setWindowTitle(AsWindowTitle(title));
  auto* button = new CaptionButton(this);
  button->SetCaption(QStringLiteral("OK"));
  button->setFixedSize(kButtonSize);
  button->setDefault(true);
  connect(button, &QPushButton::clicked, this, &QDialog::accept);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kMargin);
  // The window takes the size of its text; the user has no reason to change it.
  layout->setSizeConstraint(QLayout::SetFixedSize);
  auto* row = new QHBoxLayout;
  row->setSpacing(kMargin);
  row->addWidget(MakeSign(sign), 0, Qt::AlignTop);
  row->addWidget(MakeText(text));
  layout->addLayout(row);
  layout->addWidget(button, 0, Qt::AlignRight);
  button->setFocus();
}

QWidget* MessageWindow::MakeSign(Sign sign) {
  auto* label = new QLabel(this);
  const QIcon icon = style()->standardIcon(
      sign == Sign::Warning ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation);
  label->setPixmap(icon.pixmap(kSignSize, devicePixelRatio()));
  label->setFixedSize(kSignSize);
  label->setAccessibleName(sign == Sign::Warning ? QStringLiteral("Warning")
                                                 : QStringLiteral("Information"));
  return label;
}

QWidget* MessageWindow::MakeText(const QString& text) {
  const QSize screen = RoomOnScreen(nullptr).size();
  const int widest = std::min(kWidest, screen.width() - 5 * kMargin - kSignSize.width());
  const int highest = screen.height() - 8 * kMargin;
  // A text that fits is drawn: it needs no scroll bar, and can't take the focus from the button.
  if (text.size() <= kLongestUnscrolled) {
    const QSizeF size = SizeOfText(text, SystemFont(), widest);
    if (size.height() <= highest) {
      auto* label = new TextWidget(this);
      label->setFixedSize(std::max(kNarrowest, static_cast<int>(std::ceil(size.width())) + 1),
                          static_cast<int>(std::ceil(size.height())) + 2);
      label->SetText(text, {SystemFont(), Qt::AlignLeft, FittedText::Lines::Many}, Qt::black);
      return label;
    }
  }
  auto* scrolled = new QPlainTextEdit(text, this);
  scrolled->setReadOnly(true);
  scrolled->setTabChangesFocus(true);
  scrolled->setTextInteractionFlags(ReadOnlyFlags());
  scrolled->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  AlignToScript(*scrolled);
  scrolled->setFixedSize(widest, std::min(highest, kWidest));
  scrolled->setAccessibleName(windowTitle());
  return scrolled;
}

void MessageWindow::Run(QWidget* over) {
  adjustSize();
  PlaceInMiddle(*this, over);
  PutAbove(*this, over);
  setWindowModality(Qt::ApplicationModal);
  show();
  // Screen readers read out an alert at once, whatever has the focus.
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
  exec();
}

}  // namespace zephin
