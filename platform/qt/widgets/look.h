#ifndef PLATFORM_QT_WIDGETS_LOOK_H_
#define PLATFORM_QT_WIDGETS_LOOK_H_

#include <QFont>

// The look of the program's windows: one style, light colours, and fonts whose sizes are in pixels,
// whatever the theme of the user's session. A theme's large font or dark colours would make texts
// in windows of a fixed layout unreadable.

namespace zephin {

/// The size of the system font in pixels.
constexpr int kSystemFontPixels = 12;

/// Sets style, colours and font of the toolkit's application, which must exist, and keeps it from
/// ending when its last window is hidden.
void SetUpLook();

/// The system font. `pixels` 0 means its own size.
QFont SystemFont(int pixels = 0);
/// The smallest size to which letters of `pixels` may be shrunk. At most `pixels`.
int SmallestReadable(int pixels);

}  // namespace zephin

#endif  // PLATFORM_QT_WIDGETS_LOOK_H_
