#ifndef PLATFORM_QT_CLIPBOARD_READ_TEXT_H_
#define PLATFORM_QT_CLIPBOARD_READ_TEXT_H_

#include <string>

#include "platform/qt/clipboard/display.h"

namespace zephin {

/// The answer of the program that owns the clipboard.
struct ClipboardAnswer {
  enum class Kind {
    Text,
    Nothing,  ///< No text in that form, or more than 64 MB.
    Silence,  ///< No answer in time, or only the beginning of one.
  };
  Kind kind = Kind::Nothing;
  std::string bytes;
};

/// Asks for the text in the form `target`: UTF8_STRING, or STRING for Latin-1. `now` is a time of
/// the display that no earlier call has used. Gives up after `patience` milliseconds without any
/// answer. The bytes are those of the other program, not checked for valid UTF-8.
ClipboardAnswer ReadText(Display& display, xcb_atom_t target, xcb_timestamp_t now, int patience);

}  // namespace zephin

#endif  // PLATFORM_QT_CLIPBOARD_READ_TEXT_H_
