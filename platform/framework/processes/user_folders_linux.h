#ifndef PLATFORM_FRAMEWORK_PROCESSES_USER_FOLDERS_LINUX_H_
#define PLATFORM_FRAMEWORK_PROCESSES_USER_FOLDERS_LINUX_H_

#include <string>

// The folders of the user that this process runs for, as Linux desktops know them.

namespace zephin {

/// The user's home: `$HOME` if that is the full path of a folder, else what the user database says.
std::string HomeFolder();

/// The desktop folder as the desktop's list of user folders names it, else `Desktop` in `home`. It
/// need not exist.
std::string DesktopFolder(const std::string& home);

/// The value of XDG_DESKTOP_DIR in the text of a list of user folders; empty if it has none or that
/// isn't a full path. One line is `XDG_DESKTOP_DIR="$HOME/Bureau"`: a full path or one below
/// `$HOME`, in double quotes, with a backslash in front of special characters.
std::string DesktopFolderInList(const std::string& list, const std::string& home);

/// A folder that belongs to the user alone (mode 0700), made if need be; empty if none can be had.
std::string TemporaryFolder();

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_PROCESSES_USER_FOLDERS_LINUX_H_
