#include "platform/qt/expansion/screen_place.h"

#include <algorithm>
#include <cstdint>

namespace zephin {
namespace {

constexpr int kGap = 12;

QRect Inside(QRect place, const QRect& room) {
  // The top left corner wins where the window is larger than the room: it has the title bar.
  place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() - place.width() + 1)));
  place.moveTop(std::max(room.top(), std::min(place.top(), room.bottom() - place.height() + 1)));
  return place;
}

std::int64_t Covered(const QRect& place, const std::vector<QRect>& obstacles) {
  std::int64_t covered = 0;
  for (const QRect& obstacle : obstacles) {
    const QRect shared = place & obstacle;
    covered += std::int64_t{shared.width()} * shared.height();
  }
  return covered;
}

}  // namespace

QPoint PlaceBeside(const QSize& size, const QRect& room, const std::vector<QRect>& obstacles) {
  std::vector<QRect> places;
  for (const QRect& obstacle : obstacles) {
    const QPoint middle = obstacle.center() - QPoint(size.width() / 2, size.height() / 2);
    for (const QPoint corner : {QPoint(obstacle.right() + 1 + kGap, obstacle.top()),
                                QPoint(obstacle.left() - kGap - size.width(), obstacle.top()),
                                QPoint(middle.x(), obstacle.bottom() + 1 + kGap),
                                QPoint(middle.x(), obstacle.top() - kGap - size.height())}) {
      places.push_back(Inside(QRect(corner, size), room));
    }
  }
  for (const QPoint corner : {room.bottomRight(), room.bottomLeft(), room.topRight()}) {
    places.push_back(Inside(QRect(corner, size), room));
  }
  if (obstacles.empty()) {
    QRect middle(QPoint(0, 0), size);
    middle.moveCenter(room.center());
    return Inside(middle, room).topLeft();
  }
  return std::min_element(places.begin(), places.end(),
                          [&](const QRect& a, const QRect& b) {
                            return Covered(a, obstacles) < Covered(b, obstacles);
                          })
      ->topLeft();
}

}  // namespace zephin
