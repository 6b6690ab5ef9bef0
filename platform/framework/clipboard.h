#ifndef PLATFORM_FRAMEWORK_CLIPBOARD_H_
#define PLATFORM_FRAMEWORK_CLIPBOARD_H_

#include "platform/framework/string.h"

namespace zephin {

/// The system clipboard of the user's session. The object has no state: each call asks the desktop.
class Clipboard {
 public:
  /// The clipboard's text as UTF-8; empty if it holds no text.
  String Text() const;
  /// Replaces the contents of the clipboard. Other programs can still paste the text after this
  /// program has ended.
  void SetText(const String& text);
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_CLIPBOARD_H_
