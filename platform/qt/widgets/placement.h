#ifndef PLATFORM_QT_PLACEMENT_H_
#define PLATFORM_QT_PLACEMENT_H_

#include <QRect>

#include "platform/framework/window.h"

class QWidget;

namespace zephin {

/// Where the whole of a window can be seen, with its frame: on the screen of `over`, or on the main
/// one if that is null.
QRect RoomOnScreen(const QWidget* over);

/// Gives a window that is about to be shown its place: where the program has put it, else in the
/// middle of the screen or, if `over` isn't null, of that window, so that all of it can be seen. A
/// window that may be resized is made smaller where the screen is.
void Place(QWidget& widget, const Window& model, QWidget* over);

/// The middle of `over`, or of the screen if that is null, but wholly on the screen.
void PlaceInMiddle(QWidget& widget, QWidget* over);

/// Has the window manager keep a window above another one (null: none) and together with it.
void PutAbove(QWidget& widget, QWidget* over);

}  // namespace zephin

#endif  // PLATFORM_QT_PLACEMENT_H_
