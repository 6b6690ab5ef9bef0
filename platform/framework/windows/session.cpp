#include "platform/framework/session.h"

#include "platform/framework/application.h"

namespace zephin {

String Clipboard::Text() const {
  return Application::Current().Session().ClipboardText();
}

void Clipboard::SetText(const String& text) {
  Application::Current().Session().SetClipboardText(text);
}

Ref<FolderItem> SelectFolderDialog::ShowModal() const {
  return Application::Current().Session().SelectFolder(*this);
}

}  // namespace zephin
