#include "platform/qt/expansion/failure_window.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "platform/qt/expansion/installers.h"
#include "platform/qt/expansion/window_parts.h"
#include "platform/qt/widgets/look.h"
#include "platform/qt/widgets/text_widget.h"

namespace zephin {
namespace {

// In points.
constexpr int kMargin = 20;
constexpr int kBetweenTexts = 8;
constexpr int kBetweenButtons = 12;
constexpr int kWidth = 400;
constexpr int kListHeight = 150;
constexpr QSize kSignSize(32, 32);

}  // namespace

FailureWindow::FailureWindow(const Words& words, const FailureText& text)
    : QDialog(nullptr, FlagsOfWindow()) {
  setWindowTitle(words.Get(Word::FailureTitle));
  setLayoutDirection(words.Direction());
  setAccessibleDescription(text.heading + u' ' + text.paragraphs.join(u' '));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kMargin);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  auto* row = new QHBoxLayout;
  row->setSpacing(kMargin);
  row->addWidget(MakeSign(words), 0, Qt::AlignTop);
  auto* texts = new QVBoxLayout;
  texts->setSpacing(kBetweenTexts);
  texts->addWidget(MakeText(this, text.heading, BoldFont(), kWidth));
  for (const QString& paragraph : text.paragraphs) {
    texts->addWidget(MakeText(this, paragraph, SystemFont(), kWidth));
  }
  row->addLayout(texts);
  layout->addLayout(row);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(kBetweenButtons);
  buttons->addStretch();
  if (!text.details.isEmpty()) {
    QWidget* list = MakeList(words.Get(Word::MissingItems), text.details);
    QPushButton* details = MakeButton(this, words.Get(Word::Details));
    details->setCheckable(true);
    details->setAutoDefault(false);
    connect(details, &QPushButton::toggled, list, &QWidget::setVisible);
    layout->addWidget(list);
    buttons->addWidget(details);
  }
  QPushButton* close = MakeButton(this, words.Get(Word::Close));
  close->setDefault(true);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  buttons->addWidget(close);
  layout->addLayout(buttons);
  close->setFocus();
}

QWidget* FailureWindow::MakeSign(const Words& words) {
  auto* label = new QLabel(this);
  const QIcon icon = style()->standardIcon(QStyle::SP_MessageBoxWarning);
  label->setPixmap(icon.pixmap(kSignSize, devicePixelRatio()));
  label->setFixedSize(kSignSize);
  label->setAccessibleName(words.Get(Word::Warning));
  return label;
}

QWidget* FailureWindow::MakeList(const QString& name, const QString& details) {
  auto* list = new QPlainTextEdit(details, this);
  list->setReadOnly(true);
  list->setTabChangesFocus(true);
  list->setTextInteractionFlags(ReadOnlyFlags());
  list->setLineWrapMode(QPlainTextEdit::NoWrap);
  // Names of files are read from the left in every language.
  list->setLayoutDirection(Qt::LeftToRight);
  list->setFixedHeight(kListHeight);
  list->setAccessibleName(name);
  list->hide();
  return list;
}

void FailureWindow::Appear() {
  const bool disturbs = InstallerIsVisible();
  setAttribute(Qt::WA_ShowWithoutActivating, disturbs);
  ShowBeside(*this);
  if (disturbs) {
    QApplication::alert(this);
  } else {
    raise();
    activateWindow();
  }
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

}  // namespace zephin
