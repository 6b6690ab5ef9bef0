#ifndef TOOLS_MAKE_SETUP_ZIP_FOLDER_H_
#define TOOLS_MAKE_SETUP_ZIP_FOLDER_H_

#include <filesystem>
#include <string>

namespace zephin::make_setup {

/// Makes a ".zip" archive of all that `folder` holds, in a fixed order, with permissions, times,
/// links as links, and names in UTF-8. The contents lie in a top-level folder `topName`, or at the
/// top level if that is empty. Throws SetupError and leaves no archive where a name is not UTF-8,
/// nothing is there to pack, an item can't be read or the archive can't be written.
void ZipFolder(const std::filesystem::path& folder, const std::string& topName,
               const std::filesystem::path& archive);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_ZIP_FOLDER_H_
