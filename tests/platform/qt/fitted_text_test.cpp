#include "platform/qt/widgets/fitted_text.h"

#include <gtest/gtest.h>

#include <QBitmap>
#include <QImage>
#include <QPainter>
#include <tuple>
#include <vector>

#include "platform/qt/widgets/look.h"

namespace zephin {
namespace {

using Lines = FittedText::Lines;

constexpr int kMargin = 40;

/// The area of all coloured pixels when the text is drawn in its box, with a margin around it.
QRect InkOf(const FittedText& text, const QSize& box) {
  QImage image(box + 2 * QSize(kMargin, kMargin), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  text.Draw(painter, QPointF(kMargin, kMargin));
  const QImage ink = image.createMaskFromColor(qRgb(255, 255, 255));
  return QRegion(QBitmap::fromImage(ink)).boundingRect();
}

TEST(FittedText, NothingIsDrawnOutsideTheBox) {
  const QString blind = QStringLiteral("The quick brown fox jumps over the lazy dog. ");
  const QSize line(356, 12);
  const QSize block(204, 77);
  const std::vector<std::tuple<QString, QSize, Lines, bool>> rows{
      // The lowest text box of all windows, with accents and descenders.
      {QStringLiteral("© ÅÉÑ Ghjpqy, all rights reserved"), line, Lines::One, true},
      {QStringLiteral("हिन्दी में सर्वाधिकार सुरक्षित"), line, Lines::One, true},
      {QStringLiteral("جميع الحقوق محفوظة"), line, Lines::One, true},
      {blind.repeated(9), line, Lines::One, false},
      {blind, block, Lines::Many, true},
      {blind.repeated(5), block, Lines::Many, true},  // In smaller letters.
      {blind.repeated(20), block, Lines::Many, false},
      {QStringLiteral("/one-word").repeated(12), block, Lines::Many, true},
      {QStringLiteral("line\r\n").repeated(30), block, Lines::Many, false},
      {blind.repeated(30'000), block, Lines::Many, false},
      {QStringLiteral("tiny"), {10, 4}, Lines::Many, false},
  };
  for (const auto& [text, size, lines, whole] : rows) {
    SCOPED_TRACE(text.left(40).toStdString());
    const int pixels = lines == Lines::One ? 9 : 12;
    const FittedText fitted(text, {SystemFont(pixels), Qt::AlignLeft, lines}, size);
    EXPECT_EQ(fitted.IsWhole(), whole);
    const QRect ink = InkOf(fitted, size);
    EXPECT_FALSE(ink.isEmpty());
    // Antialiasing may touch the next pixel.
    const QRect box = QRect(QPoint(kMargin, kMargin), size).adjusted(-1, -1, 1, 1);
    EXPECT_TRUE(box.contains(ink) || size.height() < pixels);
  }
}

TEST(FittedText, LeftAlignmentFollowsTheReadingDirection) {
  const QSize box(300, 20);
  const auto inkOf = [&](const char* text, Qt::Alignment align) {
    return InkOf(FittedText(QString::fromUtf8(text), {SystemFont(), align}, box), box);
  };
  EXPECT_LT(inkOf("Hello", Qt::AlignLeft).right(), kMargin + 150);
  EXPECT_GT(inkOf("שלום", Qt::AlignLeft).left(), kMargin + 150);
  EXPECT_GT(inkOf("Hello", Qt::AlignRight).left(), kMargin + 150);
}

TEST(FitCaption, ShrinksToTheSmallestSizeAndThenElides) {
  const QFont font = SystemFont();
  const FittedCaption smaller = FitCaption(QStringLiteral("Zurücksetzen"), font, 9, 70);
  EXPECT_TRUE(smaller.whole);
  EXPECT_LT(smaller.font.pixelSize(), font.pixelSize());
  const FittedCaption cut = FitCaption(QStringLiteral("Weitere Informationen"), font, 9, 70);
  EXPECT_FALSE(cut.whole);
  EXPECT_EQ(cut.font.pixelSize(), 9);
  EXPECT_TRUE(cut.shown.endsWith(QChar(0x2026)));
}

}  // namespace
}  // namespace zephin
