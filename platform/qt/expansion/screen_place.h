// A place on the screen beside the windows that must stay visible.
#ifndef PLATFORM_QT_EXPANSION_SCREEN_PLACE_H_
#define PLATFORM_QT_EXPANSION_SCREEN_PLACE_H_

#include <QRect>
#include <vector>

namespace zephin {

/// The top left corner for something of that size, frame included, in `room`. It covers none of
/// the obstacles if there is such a place: to the right of one, else to the left, below or above.
/// Otherwise it covers as little as possible. Without obstacles it is in the middle.
QPoint PlaceBeside(const QSize& size, const QRect& room, const std::vector<QRect>& obstacles);

}  // namespace zephin

#endif  // PLATFORM_QT_EXPANSION_SCREEN_PLACE_H_
