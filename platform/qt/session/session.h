#ifndef PLATFORM_QT_SESSION_SESSION_H_
#define PLATFORM_QT_SESSION_SESSION_H_

#include <QApplication>
#include <QString>
#include <functional>
#include <memory>

// The program and the user's session: whether there is a display, which settings of the session
// reach the toolkit, and what happens when the session ends.

namespace zephin {

/// The folder `Contents` of the bundle that this program lies in, with a slash at the end. In a
/// build that isn't installed, the folder two above the program.
QString BundleContents();

/// Whether an X server accepts connections.
bool DisplayIsThere();

/// From now on every end of this process has status 0, also one that the toolkit or a signal
/// causes, for example when the display is lost. Not for tests: a failed one would have status 0,
/// too.
void EndAlwaysWithStatus0();

/// Creates the toolkit's application. Both arguments must outlive it. Settings of the session that
/// are meant for other programs of the same toolkit (plug-ins, style, theme) don't reach it; the
/// programs that this one starts get them unchanged.
std::unique_ptr<QApplication> MakeApplication(int& argc, char** argv);

/// Handles the display's events until `done` returns true, or until that many milliseconds have
/// passed. The user's input stays in the queue.
void TalkToDisplay(int milliseconds, const std::function<bool()>& done);

/// Sends all pending requests to the display.
void FlushDisplay();

}  // namespace zephin

#endif  // PLATFORM_QT_SESSION_SESSION_H_
