#ifndef UTIL_GLOBALS_H_
#define UTIL_GLOBALS_H_

#include "platform/framework/random.h"
#include "platform/framework/ref.h"
#include "platform/framework/string.h"

/// Values of the utility module, set once when the application starts and read everywhere.
namespace zephin::ViewConst {

/// Joins the lines of all messages: one line feed, once the application has started.
extern String gLineBreak;
/// Always empty, so appending it changes nothing, and LineEndingEncoding replaces nothing.
extern String gCR;
/// The program's one generator of random numbers; nil before the application has started.
extern Ref<Random> gRandom;
/// Whether DoShowModal moves its window to the top left of the screen. Nothing sets it.
extern bool gPresentTopLeft;
/// While true, GetApplicationPath never shows its dialog. The application sets it when it starts.
extern bool gIgnoreTranslocationError;

/// Sets gLineBreak and gRandom. The application's open event calls it before any window is made,
/// since messages use gLineBreak.
void VkAppInit();

// A developer's log: off unless one turns it on in a build of one's own.

/// Whether DebugConsole writes to the log. Nothing in the program sets it.
extern bool gDebugConsole;
/// The last text given to DebugConsole, whether the log is on or off.
extern String gDebugStr;

/// Appends a line to `marrowrt.log` on the desktop, which is opened and closed for each line.
void DebugConsole(const String& text);

}  // namespace zephin::ViewConst

#endif  // UTIL_GLOBALS_H_
