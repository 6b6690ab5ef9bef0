#ifndef PLATFORM_QT_CLIPBOARD_READ_TEXT_H_
#define PLATFORM_QT_CLIPBOARD_READ_TEXT_H_

#include <string>

#include "platform/qt/clipboard/display.h"

namespace zephin {

/// What the program that owns the clipboard says when it is asked for its text.
struct ClipboardAnswer {
  enum class Kind {
    Text,
    Nothing,  ///< No text in that form, or one of more than 64 MB.
    Silence,  ///< It hasn't answered in time, or not to the end.
  };
  Kind kind = Kind::Nothing;
  std::string bytes;
};

/// Asks for the text in the form `target` (UTF8_STRING, or STRING: Latin-1). `now` is a time of the
/// display's that no earlier call has named. Gives up after `patience` milliseconds of silence.
ClipboardAnswer ReadText(Display& display, xcb_atom_t target, xcb_timestamp_t now, int patience);

}  // namespace zephin

#endif  // PLATFORM_QT_CLIPBOARD_READ_TEXT_H_
