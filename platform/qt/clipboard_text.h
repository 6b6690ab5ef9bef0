#ifndef PLATFORM_QT_CLIPBOARD_TEXT_H_
#define PLATFORM_QT_CLIPBOARD_TEXT_H_

#include <string>

#include "platform/framework/string.h"

namespace zephin {

/// The text on the session's clipboard, as UTF-8; empty if there is none, or if the program that
/// owns it doesn't answer.
String ReadClipboardText();
/// Puts the text there as UTF-8. An empty one leaves an empty text, not what was there before.
void WriteClipboardText(const String& text);

/// What this process has put on the clipboard would go with it. Has the small program
/// `clipboard_keeper` of that folder take it over, and returns when it has, or after two seconds.
/// Nothing is done if the clipboard is another program's by now.
void HandClipboardOver(const std::string& helpersFolder);

}  // namespace zephin

#endif  // PLATFORM_QT_CLIPBOARD_TEXT_H_
