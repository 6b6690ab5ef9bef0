#ifndef TOOLS_MAKE_SETUP_ZIP_FOLDER_H_
#define TOOLS_MAKE_SETUP_ZIP_FOLDER_H_

#include <filesystem>
#include <string>

namespace zephin::make_setup {

/// Writes a ".zip" archive of the contents of `folder` in a fixed order, with permissions, times,
/// links as links, and names in UTF-8. The contents are in a top-level folder `topName`, or at the
/// top level if that is empty; then there must be some. Throws SetupError, and leaves no archive,
/// for a name that is not UTF-8 or an item that the expansion drops ("__MACOSX"), and if an item
/// can't be read or the archive can't be written.
void ZipFolder(const std::filesystem::path& folder, const std::string& topName,
               const std::filesystem::path& archive);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_ZIP_FOLDER_H_
