#ifndef TOOLS_MAKE_SETUP_PUBLISH_H_
#define TOOLS_MAKE_SETUP_PUBLISH_H_

#include <filesystem>
#include <string>

namespace zephin::make_setup {

/// Writes "NAME.desktop" into `folder`: the file that starts "NAME.app" beside it by a double click
/// on a Linux desktop, wherever both are moved together. Throws SetupError.
void WriteDesktopEntry(const std::string& name, const std::filesystem::path& folder);

/// Puts the finished bundle and what belongs beside it in their places, and what was there, with
/// the pieces of an earlier split payload, into `replaced`. Throws SetupError or a file system
/// error, and everything is then as it was.
void Publish(const std::filesystem::path& bundle, const std::filesystem::path& beside,
             const std::filesystem::path& output, const std::filesystem::path& replaced);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PUBLISH_H_
