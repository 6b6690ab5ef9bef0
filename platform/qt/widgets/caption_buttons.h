#ifndef PLATFORM_QT_WIDGETS_CAPTION_BUTTONS_H_
#define PLATFORM_QT_WIDGETS_CAPTION_BUTTONS_H_

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QString>

// Buttons that fit a caption of any length into their fixed width: the caption shrinks, then gets
// narrower, then is elided. All buttons of one class in a window have letters of one size, the
// largest at which each caption fits, or else the smallest readable size; hidden buttons count too.

namespace zephin {

/// A push button.
class CaptionButton final : public QPushButton {
 public:
  using QPushButton::QPushButton;
  /// Shows the caption letter for letter, and gives it to screen readers as the button's name.
  void SetCaption(const QString& caption);
  const QString& Caption() const { return caption_; }
  /// The width for the caption in points, without the margins.
  qreal RoomForCaption() const;
  /// False if the caption is elided.
  bool IsWhole() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString caption_;
};

/// A radio button or a check box. All rows of a window have their marks on the same side: on the
/// right if the script of the first row's caption runs from right to left. A checked radio button
/// stays checked when it is pressed; this class doesn't uncheck the others of its group. A click
/// anywhere in the row counts.
template <class Button>
class ChoiceButton final : public Button {
 public:
  /// Without a caption at first. The parent owns the widget.
  explicit ChoiceButton(QWidget* parent) : Button(parent) {}
  /// Shows the caption letter for letter, and gives it to screen readers as the row's name.
  void SetCaption(const QString& caption);
  const QString& Caption() const { return caption_; }
  /// The width for the caption in points, without the mark.
  qreal RoomForCaption() const;
  /// False if the caption is elided.
  bool IsWhole() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& place) const override;
  void nextCheckState() override;

 private:
  void TurnRows();

  QString caption_;
};

using RadioWidget = ChoiceButton<QRadioButton>;
using CheckWidget = ChoiceButton<QCheckBox>;

}  // namespace zephin

#endif  // PLATFORM_QT_WIDGETS_CAPTION_BUTTONS_H_
