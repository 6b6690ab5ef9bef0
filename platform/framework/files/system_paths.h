#ifndef PLATFORM_FRAMEWORK_FILES_SYSTEM_PATHS_H_
#define PLATFORM_FRAMEWORK_FILES_SYSTEM_PATHS_H_

#include <string>
#include <vector>

#include "platform/framework/string.h"

// Paths as the system takes them: bytes, with "/" between the names. For the sources of this
// folder.

namespace zephin {

/// The bytes of a path or name: UTF-8 for a text that is declared to be in another encoding.
std::string PathBytes(const String& text);
/// The path for a call of the system, which would cut one that holds a byte 0 there and act on
/// another item: such a one becomes a path of nowhere. Lives as long as `path`.
const char* SystemPath(const std::string& path);
/// Without its trailing slashes; "/" keeps its only one.
std::string WithoutTrailingSlashes(std::string path);
/// The folder that holds the item of a full path; "/" for "/" and for an empty path.
std::string FolderOfPath(const std::string& path);
/// The path of an item in a folder.
std::string PathInFolder(const std::string& folder, const std::string& name);
/// The names of what a folder holds, hidden ones too, without "." and "..", sorted by their bytes.
/// None for what isn't a folder or can't be read.
std::vector<std::string> NamesInFolder(const char* path);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_SYSTEM_PATHS_H_
