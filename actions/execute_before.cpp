#include "app/zephin_stub_window.h"
#include "payload/bundle_resources.h"
#include "platform/framework/application.h"
#include "platform/framework/clipboard.h"
#include "platform/framework/text.h"
#include "util/process.h"
#include "util/text_search.h"

// The before-program talks to the installer over the clipboard: "ZephinInstallWait" while it works,
// then "ZephinInstallDone:" or "ZephinInstallAbort:", each with a message behind it if it likes.

namespace zephin {
namespace {

/// Waits until more than `ticks` have passed.
void WaitTicks(std::int64_t ticks) {
  const std::int64_t start = Ticks();
  while (Ticks() <= start + ticks) {
    WaitingBackgroundTask();
  }
}

/// What the clipboard holds once the helper no longer asks for time. There is no limit to that.
String WaitForAnswer() {
  constexpr std::int64_t kOneSecond = 60;
  const Clipboard clipboard;
  String text;
  do {
    WaitTicks(kOneSecond);
    text = clipboard.Text();
    RuntimeBackgroundTask();
  } while (TextEquals(text, "ZephinInstallWait"));
  return text;
}

/// The text behind `word` if the answer begins with it.
bool BeginsWith(const String& answer, const String& word, String& message) {
  if (!TextEquals(Left(answer, Len(word)), word)) {
    return false;
  }
  message = Mid(answer, Len(word) + 1);
  return true;
}

}  // namespace

bool ZephinStubWindow::DoExecuteBefore() {
  if (fExecuteBeforeName.IsEmpty()) {
    return true;
  }
  Clipboard().SetText("");
  SetVisible(false);
  // No item for a missing program with a token, which delays nothing; one for a program that is
  // missing in the bundle, so the installer then waits for an answer that nobody gives.
  const Ref<FolderItem> program = FindHelper(*this, fExecuteBeforeName, ResourcesFolder());
  bool goOn = true;
  if (!program.IsNil()) {
    program->Launch(true);
    goOn = CommunicateWithExecuteBefore();
  }
  SetVisible(true);
  return goOn;
}

bool ZephinStubWindow::CommunicateWithExecuteBefore() {
  constexpr std::int64_t kTimeToSpeak = 180;
  bool goOn = true;
  WaitTicks(kTimeToSpeak);
  if (!Clipboard().Text().IsEmpty()) {
    const String answer = WaitForAnswer();
    String message;
    if (BeginsWith(answer, "ZephinInstallAbort:", message)) {
      if (!message.IsEmpty()) {
        MsgBox(message);
      }
      goOn = false;
    }
    if (BeginsWith(answer, "ZephinInstallDone:", message) && Len(message) >= 2) {
      // One character alone is no message here.
      MsgBox(message);
    }
  }
  if (goOn) {
    Show();
    ViewConst::MyProcessToTop();
  }
  return goOn;
}

}  // namespace zephin
