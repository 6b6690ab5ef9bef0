#include "app/zephin_stub_window.h"
#include "payload/bundle_resources.h"
#include "platform/framework/application.h"
#include "platform/framework/session.h"
#include "platform/framework/text.h"
#include "util/process.h"
#include "util/texts.h"

// The before-program answers over the clipboard: "ZephinInstallWait" while it works, then
// "ZephinInstallDone:" or "ZephinInstallAbort:", each with an optional message after the colon.

namespace zephin {
namespace {

/// Waits until more than `ticks` have passed.
void WaitTicks(std::int64_t ticks) {
  const std::int64_t start = Ticks();
  while (Ticks() <= start + ticks) {
    WaitingBackgroundTask();
  }
}

/// Waits until the clipboard holds another text than "ZephinInstallWait", without a limit: a helper
/// may need the user's attention. Returns that text.
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

/// Whether the answer begins with `word`, in any letter case; `message` is then what follows it.
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
  // A missing program costs no time if it is named with a token. In the bundle a missing one has an
  // item too, and the installer waits three seconds for its answer.
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
      // A single character is not shown here, on purpose; after an abort it is.
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
