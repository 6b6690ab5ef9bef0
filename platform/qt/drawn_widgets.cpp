#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

#include "platform/qt/look.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets.h"

namespace zephin {
namespace {

/// Between a push button's edge and its caption.
constexpr int kButtonMargin = 5;
/// Between a push button's edge and the mark of the focus.
constexpr int kFocusInset = 3;

}  // namespace

void PictureWidget::SetImage(QImage image) {
  image_ = std::move(image);
  update();
}

void PictureWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(QPoint(0, 0), image_);
}

void CaptionButton::SetCaption(const QString& caption) {
  if (caption != caption_) {
    caption_ = caption;
    setText(AsCaption(caption));
    setAccessibleName(caption);
    parentWidget()->update();
  }
}

FittedCaption CaptionButton::Fitted() const {
  QFont shared = font();
  for (const QObject* sibling : parentWidget()->children()) {
    const auto* button = dynamic_cast<const CaptionButton*>(sibling);
    if (button != nullptr && !button->isHidden()) {
      shared.setPixelSize(std::min(shared.pixelSize(), button->FittedAlone().font.pixelSize()));
    }
  }
  return FitCaption(caption_, shared, shared.pixelSize(), width() - 2 * kButtonMargin);
}

FittedCaption CaptionButton::FittedAlone() const {
  return FitCaption(caption_, font(), SmallestReadable(font().pixelSize()),
                    width() - 2 * kButtonMargin);
}

void CaptionButton::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const FittedCaption fitted = Fitted();
  option.text = AsCaption(fitted.shown);
  painter.setFont(fitted.font);
  painter.drawControl(QStyle::CE_PushButton, option);
  if ((option.state & QStyle::State_HasFocus) &&
      (option.state & QStyle::State_KeyboardFocusChange)) {
    // The style marks the default button and the one with the focus alike.
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(kFocusInset, kFocusInset, -kFocusInset - 1, -kFocusInset - 1));
  }
}

template <class Button>
void ChoiceButton<Button>::SetCaption(const QString& caption) {
  if (caption != caption_) {
    caption_ = caption;
    this->setText(AsCaption(caption));
    this->setAccessibleName(caption);
  }
}

template <class Button>
FittedCaption ChoiceButton<Button>::Fitted() const {
  QStyleOptionButton option;
  this->initStyleOption(&option);
  constexpr QStyle::SubElement kContents = std::is_same_v<Button, QRadioButton>
                                               ? QStyle::SE_RadioButtonContents
                                               : QStyle::SE_CheckBoxContents;
  // Rows of different letter sizes would look uneven, so that a caption here only elides.
  return FitCaption(caption_, this->font(), this->font().pixelSize(),
                    this->style()->subElementRect(kContents, &option, this).width());
}

template <class Button>
void ChoiceButton<Button>::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  this->initStyleOption(&option);
  option.text = AsCaption(Fitted().shown);
  painter.drawControl(
      std::is_same_v<Button, QRadioButton> ? QStyle::CE_RadioButton : QStyle::CE_CheckBox, option);
}

template <class Button>
void ChoiceButton<Button>::nextCheckState() {
  this->setChecked(std::is_same_v<Button, QRadioButton> || !this->isChecked());
}

template class ChoiceButton<QRadioButton>;
template class ChoiceButton<QCheckBox>;

}  // namespace zephin
