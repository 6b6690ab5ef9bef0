#ifndef PLATFORM_QT_WIDGETS_TEXT_WIDGET_H_
#define PLATFORM_QT_WIDGETS_TEXT_WIDGET_H_

#include <QWidget>
#include <functional>

#include "platform/qt/widgets/fitted_text.h"

class QPlainTextEdit;

namespace zephin {

/// A text that is drawn into the widget's size, whatever its length (see FittedText). After
/// `SetPressed` it is a link, which the mouse, the Space key and screen readers can press.
class TextWidget final : public QWidget {
 public:
  /// Empty at first. The parent owns the widget.
  explicit TextWidget(QWidget* parent);

  void SetText(const QString& text, const FittedText::Style& style, const QColor& color);
  const QString& Text() const { return text_; }
  /// Whether all of the text fits into the widget.
  bool IsWhole() const { return fitted_.IsWhole(); }

  /// Makes it a link. `pressed` gets the place of the press, from the top left corner in points;
  /// (0, 0) for keyboard and screen reader.
  void SetPressed(std::function<void(QPoint)> pressed);
  bool IsLink() const { return pressed_ != nullptr; }
  /// Does nothing if this is not a link.
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
  std::function<void(QPoint)> pressed_;
};

/// How a read-only text that scrolls reacts to mouse and keyboard: it can be selected and copied.
/// It has a caret only while a screen reader runs, which follows the caret. Without a caret, the
/// arrow keys scroll.
Qt::TextInteractionFlags ReadOnlyFlags();

/// Aligns all paragraphs of a plain text to the side where the script of its first letter begins.
void AlignToScript(QPlainTextEdit& text);

}  // namespace zephin

#endif  // PLATFORM_QT_WIDGETS_TEXT_WIDGET_H_
