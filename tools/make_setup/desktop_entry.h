#ifndef TOOLS_MAKE_SETUP_DESKTOP_ENTRY_H_
#define TOOLS_MAKE_SETUP_DESKTOP_ENTRY_H_

#include <filesystem>
#include <string>

namespace zephin::make_setup {

/// Writes "NAME.desktop" into `folder`: the file that starts "NAME.app" beside it by a double click
/// on a Linux desktop, wherever both are moved together. Throws SetupError.
void WriteDesktopEntry(const std::string& name, const std::filesystem::path& folder);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_DESKTOP_ENTRY_H_
