#ifndef PLATFORM_QT_WIDGETS_FITTED_TEXT_H_
#define PLATFORM_QT_WIDGETS_FITTED_TEXT_H_

#include <QFont>
#include <QSizeF>
#include <QString>
#include <QTextLayout>
#include <memory>
#include <vector>

class QPainter;

// Texts and captions in boxes of fixed size. The program's windows are laid out in points, not by
// the size of their fonts, so that the text adapts to the box and never the other way round.

namespace zephin {

/// A text of any script, laid out in a box in the script's own direction. A text that is too large
/// is set in smaller letters, down to a readable size; what doesn't fit even so is elided.
class FittedText {
 public:
  enum class Lines {
    One,   ///< Centred vertically. Line ends are drawn as spaces.
    Many,  ///< From the top. Lines break between words, and inside a word that is too long.
  };
  struct Style {
    QFont font;  ///< At its largest size, in pixels.
    /// Left means the side where the text's script begins: the right side for Arabic.
    Qt::Alignment align = Qt::AlignLeft;
    Lines lines = Lines::One;
  };

  /// An empty text.
  FittedText() = default;
  /// `box` is in points.
  FittedText(const QString& text, const Style& style, const QSizeF& box);

  /// Draws the text in the painter's pen. `origin` is the top left corner of the box.
  void Draw(QPainter& painter, const QPointF& origin) const;
  /// False if part of the text is left out.
  bool IsWhole() const { return whole_; }

 private:
  // Layout. The first two return whether everything fits.
  bool Lay(const QString& text, const Style& style, const QSizeF& box);
  bool LayParagraph(const QString& text, const Style& style, const QSizeF& box);
  void ElideLastLine(const Style& style, const QSizeF& box);
  int LinesThatFit(const Style& style, const QSizeF& box);
  void CentreLine(const QSizeF& box);

  std::vector<std::shared_ptr<QTextLayout>> paragraphs_;
  qreal height_ = 0;
  bool whole_ = true;
};

/// A one-line caption, fitted to a width.
struct FittedCaption {
  QFont font;
  QString shown;      ///< With an ellipsis if it isn't whole.
  bool whole = true;  ///< False if part of the caption is left out.
};
/// First makes the letters smaller, but not smaller than `floorPixels`; then narrower, down to
/// three quarters of their width; then elides. `width` is in points.
FittedCaption FitCaption(const QString& text, QFont font, int floorPixels, qreal width);

/// The size of the text in points when its lines are broken at `width`.
QSizeF SizeOfText(const QString& text, const QFont& font, qreal width);

}  // namespace zephin

#endif  // PLATFORM_QT_WIDGETS_FITTED_TEXT_H_
