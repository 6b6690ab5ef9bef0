#ifndef PLATFORM_QT_WIDGETS_PLACEMENT_H_
#define PLATFORM_QT_WIDGETS_PLACEMENT_H_

#include <QRect>

#include "platform/framework/window.h"

class QWidget;

// The places of windows on the screen, in points. A parameter `over` is the window above which
// another one appears; null stands for none.

namespace zephin {

/// The area for a window's content on the screen of `over`, or on the screen with the pointer if
/// that is null: what panels of the desktop and the window's frame leave free.
QRect RoomOnScreen(const QWidget* over);

/// Sets the place of a window that is about to be shown: where the program has put it, else in the
/// middle of `over` or of the screen. A resizable window that is larger than the screen shrinks.
void Place(QWidget& widget, const Window& model, QWidget* over);

/// Moves the window to the middle of `over`, or of the screen, but not beyond the screen's edges.
void PlaceInMiddle(QWidget& widget, QWidget* over);

/// Makes the window manager keep the window above `over`.
void PutAbove(QWidget& widget, QWidget* over);

}  // namespace zephin

#endif  // PLATFORM_QT_WIDGETS_PLACEMENT_H_
