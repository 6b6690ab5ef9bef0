#include "util/globals.h"

#include "platform/framework/folder_item.h"
#include "platform/framework/streams.h"
#include "platform/framework/text.h"

namespace zephin::ViewConst {

String gLineBreak;
String gCR;
Ref<Random> gRandom;
bool gPresentTopLeft = false;
bool gIgnoreTranslocationError = false;

void VkAppInit() {
  gLineBreak = Chr(10);
  gRandom = MakeRef<Random>();
}

bool gDebugConsole = false;
String gDebugStr;

void DebugConsole(const String& text) {
  if (gDebugConsole) {
    const Ref<FolderItem> log = SpecialFolder::Desktop()->Child("marrowrt.log", true);
    // Closed after each line, so that the log is complete if the program crashes next.
    const Ref<TextOutputStream> stream = TextOutputStream::Append(log);
    stream->WriteLine(text);
    stream->Close();
  }
  gDebugStr = text;
}

}  // namespace zephin::ViewConst
