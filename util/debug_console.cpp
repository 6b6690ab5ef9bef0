#include "util/debug_console.h"

#include "platform/framework/folder_item.h"
#include "platform/framework/streams.h"

namespace zephin::ViewConst {

bool gDebugConsole = false;
String gDebugStr;

void DebugConsole(const String& text) {
  if (gDebugConsole) {
    const Ref<FolderItem> log = SpecialFolder::Desktop()->Child("marrowrt.log", true);
    const Ref<TextOutputStream> stream = TextOutputStream::Append(log);
    stream->WriteLine(text);
    stream->Close();
  }
  gDebugStr = text;
}

}  // namespace zephin::ViewConst
