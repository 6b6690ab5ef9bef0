#ifndef PLATFORM_FRAMEWORK_LAUNCHER_H_
#define PLATFORM_FRAMEWORK_LAUNCHER_H_

#include <string>
#include <vector>

namespace zephin {

struct Command {
  std::vector<std::string> words;
  /// The path of a file that is the program's standard input; empty for /dev/null.
  std::string input;
};

/// The command that opens an item like a double-click: for a ".zip" file the expander in
/// `helpersFolder` (empty: none), for an executable file the file itself, for an ".app" bundle its
/// program in `Contents/MacOS` (the one that Info.plist names, else the only one), for anything
/// else the desktop's opener. `path` is absolute; links are followed. Without words if the item
/// does not exist. Defined in processes/launcher_linux.cpp.
///
/// The expander gets the archive as its standard input too, already open: the installer deletes the
/// archive after a fixed time, which may be over on a busy machine before the expander runs.
///
/// An executable permission alone does not make a program, since a setup may give all users all
/// rights on a document. A file is a program if it begins with "#!" or the mark of a binary. A text
/// without "#!" is run by the shell if its name has no extension or one of scripts (".sh",
/// ".command", ".run"), and is opened as a document otherwise.
Command CommandToOpen(const std::string& path, const std::string& helpersFolder);

/// Starts a program that outlives this process. It inherits no descriptors (its standard output
/// and error, and its input if it has none or it can't be read, are /dev/null) and no signal
/// settings, runs in a session of its own with "/" as its working directory, and leaves no zombie
/// process. `command` must have a word; the first is an absolute path or a name that is searched
/// for in PATH. Returns as soon as the program has started, with its input open; false if it cannot
/// be started. Defined in processes/detached_process_linux.cpp.
[[nodiscard]] bool StartDetached(const Command& command);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_LAUNCHER_H_
