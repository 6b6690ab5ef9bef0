#ifndef PLATFORM_FRAMEWORK_CLIPBOARD_H_
#define PLATFORM_FRAMEWORK_CLIPBOARD_H_

#include "platform/framework/string.h"

namespace zephin {

/// The user's own system clipboard. It has no state of its own: each call asks the desktop.
class Clipboard {
 public:
  /// The text on it, as UTF-8; empty if there is none.
  String Text() const;
  /// Replaces what the user had there.
  void SetText(const String& text);
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_CLIPBOARD_H_
