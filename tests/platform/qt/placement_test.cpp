#include "platform/qt/widgets/placement.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace zephin {
namespace {

TEST(PlaceInMiddle, IsOnTheScreenWithThePointerOrWithTheWindowBelow) {
  const QList<QScreen*> screens = QGuiApplication::screens();
  ASSERT_EQ(screens.size(), 2);
  for (const QScreen* screen : screens) {
    const QPoint middle = screen->geometry().center();
    // Near an edge, so that the middle between both screens would be found.
    QCursor::setPos(screen->geometry().bottomRight() - QPoint(3, 3));
    QWidget widget;
    widget.resize(200, 100);
    PlaceInMiddle(widget, nullptr);
    EXPECT_TRUE(screen->geometry().contains(widget.geometry())) << screen->name().toStdString();
    EXPECT_LT((widget.geometry().center() - middle).manhattanLength(), 40);
    widget.show();
    for (const QScreen* other : screens) {
      QCursor::setPos(other->geometry().center());
      QWidget question;
      question.resize(100, 50);
      PlaceInMiddle(question, &widget);
      EXPECT_EQ(question.geometry().center(), widget.geometry().center());
    }
  }
}

}  // namespace
}  // namespace zephin
