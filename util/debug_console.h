#ifndef UTIL_DEBUG_CONSOLE_H_
#define UTIL_DEBUG_CONSOLE_H_

#include "platform/framework/string.h"

/// A developer's log: off unless one turns it on in a build of one's own.
namespace zephin::ViewConst {

/// Whether DebugConsole writes to the log. Nothing in the program sets it.
extern bool gDebugConsole;
/// The last text given to DebugConsole, whether the log is on or off.
extern String gDebugStr;

/// Appends a line to `marrowrt.log` on the desktop, which is opened and closed for each line.
void DebugConsole(const String& text);

}  // namespace zephin::ViewConst

#endif  // UTIL_DEBUG_CONSOLE_H_
