#ifndef PLATFORM_FRAMEWORK_LAUNCHER_H_
#define PLATFORM_FRAMEWORK_LAUNCHER_H_

#include <string>
#include <vector>

namespace zephin {

/// The command line that opens an item as a double-click would: the expander of `helpersFolder`
/// (which may be empty: none) for a ".zip" file, the program itself for an executable file, the
/// program in `Contents/MacOS` for an ".app" bundle (named by its Info.plist, else the only one
/// there), the desktop's opener for anything else. `path` is a full one; links are followed. Empty
/// if nothing stands there.
///
/// A file with the right to be executed is a program if its bytes say so ("#!" or a binary's mark);
/// a text without such a mark is run by the shell if its name has no ending or one of a script, and
/// is a document else: a setup may give all users all rights on a plain document.
std::vector<std::string> CommandToOpen(const std::string& path, const std::string& helpersFolder);

/// Starts a program that lives on by itself: it inherits no descriptor (its standard ones lead
/// nowhere) and no signal settings, begins in "/", doesn't die with this process and leaves no
/// zombie under it. `command` must not be empty; its first word is a full path, or a name that is
/// looked for in the search path. Returns when it has started; false if it can't be.
[[nodiscard]] bool StartDetached(const std::vector<std::string>& command);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_LAUNCHER_H_
