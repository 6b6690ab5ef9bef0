#ifndef PLATFORM_FRAMEWORK_FILES_SYSTEM_PATHS_H_
#define PLATFORM_FRAMEWORK_FILES_SYSTEM_PATHS_H_

#include <string>
#include <vector>

#include "platform/framework/string.h"

// Paths as the system takes them: bytes with "/" between the names. Only the sources of this wing
// use these functions.

namespace zephin {

/// The bytes of a path or name. A text in another declared encoding is converted to UTF-8.
std::string PathBytes(const String& text);
/// The path for a system call; valid as long as `path`. A system call would end the path at a byte
/// 0 and act on another item, so that a path with one becomes "", which names no item.
const char* SystemPath(const std::string& path);
/// The path without trailing slashes; "/" stays.
std::string WithoutTrailingSlashes(std::string path);
/// The folder above the item of an absolute path; "/" for "/" and for an empty path.
std::string FolderOfPath(const std::string& path);
/// `folder`, a slash unless there is one, and `name`.
std::string PathInFolder(const std::string& folder, const std::string& name);
/// The names of all items in a folder, including hidden ones, sorted by their bytes. Empty if the
/// folder cannot be read or the path is not a folder.
std::vector<std::string> NamesInFolder(const char* path);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_SYSTEM_PATHS_H_
