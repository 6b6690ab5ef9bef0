#ifndef PLATFORM_QT_SESSION_H_
#define PLATFORM_QT_SESSION_H_

#include <QApplication>
#include <functional>
#include <memory>

// How the program meets the user's session: whether there is one, what of its settings the toolkit
// may take, and what happens when it ends.

namespace zephin {

/// Whether an X display takes connections.
bool DisplayIsThere();

/// Every end of this process from now on, the toolkit's own included (the display has gone, say),
/// has status 0. For programs that build on QtDesktop alone: a failed test would end so too.
void EndAlwaysWithStatus0();

/// The toolkit's application. The session's own settings for other programs of the same toolkit
/// (plug-ins, style, theme) are kept from it, and stand again for the programs that this one
/// starts. Both arguments must outlive it.
std::unique_ptr<QApplication> MakeApplication(int& argc, char** argv);

/// Talks to the display until `done` holds, or until that many milliseconds have passed. The user's
/// input waits meanwhile.
void TalkToDisplay(int milliseconds, const std::function<bool()>& done);

/// Sends the display what has been drawn and set so far.
void FlushDisplay();

}  // namespace zephin

#endif  // PLATFORM_QT_SESSION_H_
