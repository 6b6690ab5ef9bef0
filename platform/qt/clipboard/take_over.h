#ifndef PLATFORM_QT_CLIPBOARD_TAKE_OVER_H_
#define PLATFORM_QT_CLIPBOARD_TAKE_OVER_H_

#include <optional>
#include <string>

#include "platform/qt/clipboard/display.h"

namespace zephin {

/// A text on the clipboard and since when it is there.
struct KeptText {
  std::string utf8;
  xcb_timestamp_t since = XCB_CURRENT_TIME;
};

/// Reads the clipboard's text from the program that owns it and becomes its owner in its stead.
/// Only from `owner`: nothing, and nothing is changed, if the clipboard is another's by now, or if
/// the owner doesn't answer or has no text, or one of more than 64 MB.
std::optional<KeptText> TakeOver(Display& display, xcb_window_t owner);

}  // namespace zephin

#endif  // PLATFORM_QT_CLIPBOARD_TAKE_OVER_H_
