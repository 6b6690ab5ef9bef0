#include "platform/framework/clipboard.h"

#include "platform/framework/application.h"

namespace zephin {

String Clipboard::Text() const {
  return Application::Current().Session().ClipboardText();
}

void Clipboard::SetText(const String& text) {
  Application::Current().Session().SetClipboardText(text);
}

}  // namespace zephin
