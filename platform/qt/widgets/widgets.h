#ifndef PLATFORM_QT_WIDGETS_H_
#define PLATFORM_QT_WIDGETS_H_

#include <QCheckBox>
#include <QImage>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>
#include <functional>

#include "platform/qt/widgets/fitted_text.h"

// Widgets that draw what they show within their fixed size. They know nothing of the model; the
// peers fill them.

namespace zephin {

/// A text in its box. With `Pressed` it is a link, for the mouse, the keyboard (the blank) and
/// screen readers.
class TextWidget final : public QWidget {
 public:
  explicit TextWidget(QWidget* parent);

  void SetText(const QString& text, const FittedText::Style& style, const QColor& color);
  const QString& Text() const { return text_; }
  /// Whether all of the text can be read in the box.
  bool IsWhole() const { return fitted_.IsWhole(); }
  void SetPressed(std::function<void(QPoint)> pressed);
  bool IsLink() const { return Pressed != nullptr; }
  void Press(QPoint place);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Fit();

  QString text_;
  FittedText::Style style_;
  QColor color_;
  FittedText fitted_;
  std::function<void(QPoint)> Pressed;
};

/// A picture at its top left corner, in points.
class PictureWidget final : public QWidget {
 public:
  explicit PictureWidget(QWidget* parent) : QWidget(parent) {}
  void SetImage(QImage image);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QImage image_;
};

/// A push button whose caption shrinks, narrows, then elides. The buttons of a window have letters
/// of one size, the smallest that one of them needs.
class CaptionButton final : public QPushButton {
 public:
  using QPushButton::QPushButton;
  void SetCaption(const QString& caption);
  const QString& Caption() const { return caption_; }
  /// In points, without the space that frame or mark take.
  qreal RoomForCaption() const;
  /// False if part of the caption is left out.
  bool IsWhole() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString caption_;
};

/// A radio button or check box whose caption is fitted in the same way. The rows of a window have
/// their marks at one side: at the right where the first caption's script begins there. A radio
/// button that is set stays set when it is pressed; its group is the affair of who owns it.
template <class Button>
class ChoiceButton final : public Button {
 public:
  explicit ChoiceButton(QWidget* parent) : Button(parent) {}
  void SetCaption(const QString& caption);
  const QString& Caption() const { return caption_; }
  /// In points, without the space that frame or mark take.
  qreal RoomForCaption() const;
  /// False if part of the caption is left out.
  bool IsWhole() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void nextCheckState() override;

 private:
  void TurnRows();

  QString caption_;
};

using RadioWidget = ChoiceButton<QRadioButton>;
using CheckWidget = ChoiceButton<QCheckBox>;

}  // namespace zephin

#endif  // PLATFORM_QT_WIDGETS_H_
