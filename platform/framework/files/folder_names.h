#ifndef PLATFORM_FRAMEWORK_FILES_FOLDER_NAMES_H_
#define PLATFORM_FRAMEWORK_FILES_FOLDER_NAMES_H_

#include <string>
#include <vector>

namespace zephin {

/// The names of what a folder holds, hidden ones too, without "." and "..", sorted by their bytes.
/// None for what isn't a folder or can't be read.
std::vector<std::string> NamesInFolder(const char* path);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_FOLDER_NAMES_H_
