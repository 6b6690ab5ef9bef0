#ifndef PLATFORM_QT_FITTED_TEXT_H_
#define PLATFORM_QT_FITTED_TEXT_H_

#include <QFont>
#include <QSizeF>
#include <QString>
#include <QTextLayout>
#include <memory>
#include <vector>

class QPainter;

namespace zephin {

/// A text laid out in a box of fixed size, any script in its own direction. What is too large for
/// the box is set in smaller letters down to a readable size, and what is still too long is cut off
/// with an ellipsis. The box never changes: windows are laid out in points, not by fonts.
class FittedText {
 public:
  enum class Lines {
    One,   ///< Centred vertically; line ends show as blanks.
    Many,  ///< From the top, broken at words and where no word ends.
  };
  struct Style {
    QFont font;
    Qt::Alignment align = Qt::AlignLeft;  ///< Left is the side at which the text's script begins.
    Lines lines = Lines::One;
  };

  FittedText() = default;
  FittedText(const QString& text, const Style& style, const QSizeF& box);

  /// Draws it with the painter's pen; `origin` is the box's top left corner.
  void Draw(QPainter& painter, const QPointF& origin) const;
  /// False if part of the text was cut off.
  bool IsWhole() const { return whole_; }

 private:
  bool Lay(const QString& text, const Style& style, const QSizeF& box);
  bool LayParagraph(const QString& text, const Style& style, const QSizeF& box);
  void CutOff(const Style& style, const QSizeF& box);
  void CentreLine(const QSizeF& box);

  std::vector<std::shared_ptr<QTextLayout>> paragraphs_;
  qreal height_ = 0;
  bool whole_ = true;
};

/// A one-line caption as a button can draw it: the font that it takes to fit into `width`, not
/// smaller than `floorPixels` and then narrower by a quarter at most, and the text, elided if it
/// doesn't fit even so.
struct FittedCaption {
  QFont font;
  QString shown;
  bool whole = true;
};
FittedCaption FitCaption(const QString& text, QFont font, int floorPixels, qreal width);

/// The size that the text takes when it is broken at `width`.
QSizeF SizeOfText(const QString& text, const QFont& font, qreal width);

}  // namespace zephin

#endif  // PLATFORM_QT_FITTED_TEXT_H_
