#ifndef PLATFORM_QT_LOOK_H_
#define PLATFORM_QT_LOOK_H_

#include <QFont>

// The look of the program's windows: one style, light colours and fonts in pixels, whatever theme
// the user's session has. Windows are laid out in fixed points, so that a theme's large font or
// dark colours would make their texts unreadable.

namespace zephin {

/// Size of the system's font in pixels.
constexpr int kSystemFontPixels = 12;

/// Gives the toolkit's application its style, colours and font, and the habits of this program: it
/// doesn't end when its last window is hidden.
void SetUpLook();

/// The system's font; `pixels` 0: at its own size.
QFont SystemFont(int pixels = 0);
/// The smallest size in pixels to which a text of `pixels` may be shrunk and still be read.
int SmallestReadable(int pixels);

}  // namespace zephin

#endif  // PLATFORM_QT_LOOK_H_
