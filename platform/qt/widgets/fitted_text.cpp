#include "platform/qt/widgets/fitted_text.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QTextOption>
#include <algorithm>
#include <cmath>

#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/look.h"

namespace zephin {
namespace {

/// More letters than any box can show. The rest of a long text isn't laid out, which takes time.
constexpr qsizetype kLongestShown = 20'000;
constexpr qreal kEndless = 1'000'000;
/// In per cent of a letter's width. Narrower letters are hard to read.
constexpr int kNarrowest = 75;
/// In points. A text isn't shrunk because of the rounding of its font's measures.
constexpr qreal kTolerance = 0.5;

QTextOption OptionFor(const QString& text, const FittedText::Style& style) {
  const bool fromTheRight = text.isRightToLeft();
  const bool atItsBeginning = style.align == Qt::AlignLeft;
  QTextOption option(fromTheRight && atItsBeginning ? Qt::AlignRight : style.align);
  // Given to each paragraph: without it, the toolkit takes the direction of the application.
  option.setTextDirection(fromTheRight ? Qt::RightToLeft : Qt::LeftToRight);
  option.setWrapMode(style.lines == FittedText::Lines::Many
                         ? QTextOption::WrapAtWordBoundaryOrAnywhere
                         : QTextOption::NoWrap);
  return option;
}

/// The area that the letters of a line really cover. The font's line height may be larger, or
/// smaller for scripts with marks above and below.
QRectF InkOf(const QTextLine& line) {
  QRectF ink;
  for (const QGlyphRun& run : line.glyphRuns()) {
    ink |= run.boundingRect();
  }
  return ink;
}

}  // namespace

FittedText::FittedText(const QString& text, const Style& style, const QSizeF& box) {
  QString letters = WithLineFeeds(text.left(kLongestShown));
  if (style.lines == Lines::One) {
    letters.replace(u'\n', u' ');
  }
  Style smaller = style;
  const int floor = SmallestReadable(style.font.pixelSize());
  for (int pixels = style.font.pixelSize(); pixels >= floor; --pixels) {
    smaller.font.setPixelSize(pixels);
    whole_ = Lay(letters, smaller, box) && text.size() <= kLongestShown;
    if (whole_) {
      break;
    }
  }
  if (!whole_) {
    ElideLastLine(smaller, box);
  }
  if (style.lines == Lines::One) {
    CentreLine(box);
  }
}

bool FittedText::Lay(const QString& text, const Style& style, const QSizeF& box) {
  paragraphs_.clear();
  height_ = 0;
  const QStringList paragraphs = text.split(u'\n');
  return std::all_of(paragraphs.begin(), paragraphs.end(),
                     [&](const QString& paragraph) { return LayParagraph(paragraph, style, box); });
}

/// False if the paragraph doesn't fit. The last line in the layout is then the one that doesn't.
bool FittedText::LayParagraph(const QString& text, const Style& style, const QSizeF& box) {
  const auto layout = std::make_shared<QTextLayout>(text, style.font);
  layout->setTextOption(OptionFor(text, style));
  paragraphs_.push_back(layout);
  bool fits = true;
  layout->beginLayout();
  while (fits) {
    QTextLine line = layout->createLine();
    if (!line.isValid()) {
      break;
    }
    line.setLineWidth(box.width());
    line.setPosition(QPointF(0, height_));
    // Whole points, so that the lines below are sharp.
    height_ += std::ceil(line.height());
    const QRectF ink = InkOf(line);
    const qreal bottom = style.lines == Lines::One ? ink.height() : std::min(ink.bottom(), height_);
    fits = bottom <= box.height() + kTolerance &&
           (style.lines == Lines::Many || line.naturalTextWidth() <= box.width() + kTolerance);
  }
  layout->endLayout();
  return fits;
}

/// How many lines of the last paragraph fit into the box. A paragraph of which none fits is
/// dropped, unless it is the only one; of that, one line is kept, however small the box.
int FittedText::LinesThatFit(const Style& style, const QSizeF& box) {
  int lines = paragraphs_.back()->lineCount();
  const QTextLine last = paragraphs_.back()->lineAt(lines - 1);
  const bool lastFits =
      std::min(InkOf(last).bottom(), last.y() + last.height()) <= box.height() + kTolerance;
  if (style.lines == Lines::Many && !lastFits) {
    --lines;
    if (lines == 0 && paragraphs_.size() > 1) {
      paragraphs_.pop_back();
      lines = paragraphs_.back()->lineCount();
    }
  }
  return std::max(lines, 1);
}

/// Lays out the last line that fits once more, with an ellipsis in place of all that follows it.
void FittedText::ElideLastLine(const Style& style, const QSizeF& box) {
  const int lines = LinesThatFit(style, box);
  const std::shared_ptr<QTextLayout> last = paragraphs_.back();
  const qsizetype start = last->lineAt(lines - 1).textStart();
  const QString rest = last->text().mid(start) + QChar(0x2026);
  const QString elided = QFontMetricsF(style.font).elidedText(rest, Qt::ElideRight, box.width());
  paragraphs_.pop_back();
  height_ = paragraphs_.empty() ? 0 : last->lineAt(0).y();
  LayParagraph(last->text().left(start) + elided, style, QSizeF(box.width(), kEndless));
}

void FittedText::CentreLine(const QSizeF& box) {
  QTextLine line = paragraphs_.front()->lineAt(0);
  if (!line.isValid()) {
    return;
  }
  qreal top = std::floor((box.height() - line.height()) / 2);
  const QRectF ink = InkOf(line);
  if (!ink.isEmpty()) {
    top = std::min(top, std::floor(box.height() - ink.bottom()));
    top = std::max(top, -std::floor(ink.top()));
  }
  line.setPosition(QPointF(0, top));
}

void FittedText::Draw(QPainter& painter, const QPointF& origin) const {
  for (const auto& paragraph : paragraphs_) {
    paragraph->draw(&painter, origin);
  }
}

FittedCaption FitCaption(const QString& text, QFont font, int floorPixels, qreal width) {
  QString letters = WithLineFeeds(text);
  letters.replace(u'\n', u' ');
  const auto fits = [&] { return QFontMetricsF(font).horizontalAdvance(letters) <= width; };
  while (!fits() && font.pixelSize() > floorPixels) {
    font.setPixelSize(font.pixelSize() -
                      1);  // Smaller letters are better to read than narrow ones.
  }
  for (int stretch = 95; !fits() && stretch >= kNarrowest; stretch -= 5) {
    font.setStretch(stretch);
  }
  if (fits()) {
    return {font, letters, true};
  }
  return {font, QFontMetricsF(font).elidedText(letters, Qt::ElideRight, width), false};
}

QSizeF SizeOfText(const QString& text, const QFont& font, qreal width) {
  QSizeF size;
  FittedText::Style style{font, Qt::AlignLeft, FittedText::Lines::Many};
  for (const QString& paragraph : WithLineFeeds(text).split(u'\n')) {
    QTextLayout layout(paragraph, font);
    layout.setTextOption(OptionFor(paragraph, style));
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
      line.setLineWidth(width);
      size.setHeight(size.height() + std::ceil(line.height()));
      size.setWidth(std::max(size.width(), line.naturalTextWidth()));
    }
    layout.endLayout();
  }
  return size;
}

}  // namespace zephin
