#ifndef PLATFORM_FRAMEWORK_LAUNCHER_H_
#define PLATFORM_FRAMEWORK_LAUNCHER_H_

#include <string>
#include <vector>

namespace zephin {

/// The command line that opens an item as a double-click would: the expander of `helpersFolder` for
/// a ".zip" file, the program itself for an executable file, the program in `Contents/MacOS` for a
/// bundle (named by its Info.plist, else the only one there), the desktop's opener for anything
/// else. Empty if nothing stands at `path`.
std::vector<std::string> CommandToOpen(const std::string& path, const std::string& helpersFolder);

/// Starts a program that lives on by itself: it inherits no descriptor (its standard ones lead
/// nowhere), doesn't die with this process and leaves no zombie under it. `command` must not be
/// empty; its first word is a path or a name to look for in the search path. False if it can't be
/// started.
bool StartDetached(const std::vector<std::string>& command);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_LAUNCHER_H_
