#include "platform/qt/widgets/caption_buttons.h"

#include <QStyleOptionButton>
#include <QStylePainter>
#include <optional>
#include <type_traits>

#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/fitted_text.h"
#include "platform/qt/widgets/look.h"

namespace zephin {
namespace {

// In points.
constexpr int kButtonMargin = 5;
constexpr int kFocusInset = 3;

Qt::LayoutDirection DirectionOf(const QString& caption) {
  return caption.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

/// Keeps the punctuation of a caption in place in a row of the other direction: without isolation,
/// a full stop at the end would be drawn at the beginning.
QString InItsDirection(const QString& caption) {
  constexpr QChar kIsolateLeftToRight(0x2066);
  constexpr QChar kIsolateRightToLeft(0x2067);
  constexpr QChar kEndOfIsolate(0x2069);
  return (caption.isRightToLeft() ? kIsolateRightToLeft : kIsolateLeftToRight) + caption +
         kEndOfIsolate;
}

template <class Captioned>
FittedCaption Fitted(const Captioned& widget) {
  // Fitting one after the other to the size that the last one needed ends at the smallest size.
  QFont shared = widget.font();
  const int floor = SmallestReadable(shared.pixelSize());
  for (const QObject* sibling : widget.parentWidget()->children()) {
    const auto* other = dynamic_cast<const Captioned*>(sibling);
    if (other != nullptr) {  // Hidden or not: the size must not change when one is shown.
      const FittedCaption alone =
          FitCaption(other->Caption(), shared, floor, other->RoomForCaption());
      shared.setPixelSize(alone.font.pixelSize());
    }
  }
  return FitCaption(widget.Caption(), shared, shared.pixelSize(), widget.RoomForCaption());
}

}  // namespace

bool CaptionButton::IsWhole() const {
  return Fitted(*this).whole;
}

void CaptionButton::SetCaption(const QString& caption) {
  if (caption != caption_) {
    caption_ = caption;
    setText(AsCaption(caption));
    setAccessibleName(caption);
    setLayoutDirection(DirectionOf(caption));
    parentWidget()->update();  // The other buttons' letters may change with these.
  }
}

qreal CaptionButton::RoomForCaption() const {
  return width() - 2 * kButtonMargin;
}

void CaptionButton::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const FittedCaption fitted = Fitted(*this);
  // The style draws the caption in the painter's font, which is not the widget's own.
  option.text = AsCaption(fitted.shown);
  painter.setFont(fitted.font);
  painter.drawControl(QStyle::CE_PushButton, option);
  if (option.state & QStyle::State_HasFocus) {
    // The style draws the default button and the one with the focus alike.
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
    TurnRows();
    this->parentWidget()->update();
  }
}

template <class Button>
void ChoiceButton<Button>::TurnRows() {
  std::optional<Qt::LayoutDirection> direction;
  for (QObject* sibling : this->parentWidget()->children()) {
    if (auto* row = dynamic_cast<ChoiceButton*>(sibling)) {
      direction = direction.value_or(DirectionOf(row->caption_));
      row->setLayoutDirection(*direction);
    }
  }
}

template <class Button>
qreal ChoiceButton<Button>::RoomForCaption() const {
  QStyleOptionButton option;
  this->initStyleOption(&option);
  constexpr QStyle::SubElement kContents = std::is_same_v<Button, QRadioButton>
                                               ? QStyle::SE_RadioButtonContents
                                               : QStyle::SE_CheckBoxContents;
  return this->style()->subElementRect(kContents, &option, this).width();
}

template <class Button>
bool ChoiceButton<Button>::IsWhole() const {
  return Fitted(*this).whole;
}

template <class Button>
void ChoiceButton<Button>::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  this->initStyleOption(&option);
  const FittedCaption fitted = Fitted(*this);
  option.text = AsCaption(InItsDirection(fitted.shown));
  option.state.setFlag(QStyle::State_KeyboardFocusChange);  // Shows the focus, however it came.
  painter.setFont(fitted.font);
  painter.drawControl(
      std::is_same_v<Button, QRadioButton> ? QStyle::CE_RadioButton : QStyle::CE_CheckBox, option);
}

template <class Button>
bool ChoiceButton<Button>::hitButton(const QPoint& place) const {
  return this->rect().contains(place);
}

template <class Button>
void ChoiceButton<Button>::nextCheckState() {
  // A model's radio button can only be unset by another one.
  this->setChecked(std::is_same_v<Button, QRadioButton> || !this->isChecked());
}

template class ChoiceButton<QRadioButton>;
template class ChoiceButton<QCheckBox>;

}  // namespace zephin
