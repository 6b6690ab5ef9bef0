#include "platform/qt/widgets/placement.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace zephin {
namespace {

/// A code of the model for the place of a window.
constexpr int kCentreOfScreen = 4;
/// The size of a common window manager's frame: the real one isn't known before the window is
/// shown.
constexpr int kTitleBarHeight = 30;
constexpr int kFrameWidth = 4;

void FitScreen(QWidget& widget, const QRect& room) {
  widget.resize(widget.size().boundedTo(room.size()).expandedTo(widget.minimumSize()));
}

}  // namespace

QRect RoomOnScreen(const QWidget* over) {
  const QScreen* screen =
      over != nullptr ? over->screen() : QGuiApplication::screenAt(QCursor::pos());
  if (screen == nullptr) {
    screen = QGuiApplication::primaryScreen();
  }
  return screen->availableGeometry().adjusted(kFrameWidth, kTitleBarHeight, -kFrameWidth,
                                              -kFrameWidth);
}

void Place(QWidget& widget, const Window& model, QWidget* over) {
  if (model.HasPosition()) {
    widget.setGeometry(QRect(QPoint(model.Left(), model.Top()), widget.size()));
    return;
  }
  if (model.Resizeable()) {
    FitScreen(widget, RoomOnScreen(over));
  }
  PlaceInMiddle(widget, model.DefaultLocation() == kCentreOfScreen ? nullptr : over);
}

void PlaceInMiddle(QWidget& widget, QWidget* over) {
  const QRect room = RoomOnScreen(over);
  QRect place(QPoint(0, 0), widget.size());
  place.moveCenter(over != nullptr ? over->geometry().center() : room.center());
  // The top left corner wins where the window is larger than the room: it has the title bar.
  place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() - place.width() + 1)));
  place.moveTop(std::max(room.top(), std::min(place.top(), room.bottom() - place.height() + 1)));
  widget.setGeometry(place);
}

void PutAbove(QWidget& widget, QWidget* over) {
  widget.winId();  // Creates the native window, which otherwise exists only once it is shown.
  widget.windowHandle()->setTransientParent(over == nullptr ? nullptr : over->windowHandle());
}

}  // namespace zephin
