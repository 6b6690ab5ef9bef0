#ifndef TOOLS_MAKE_SETUP_PUBLISH_H_
#define TOOLS_MAKE_SETUP_PUBLISH_H_

#include <filesystem>
#include <string>

/// The last steps: what makes a bundle appear in its place, whole or not at all.
namespace zephin::make_setup {

/// Writes "NAME.desktop" into `folder`. A double click on it on a Linux desktop starts "NAME.app"
/// in the same folder; both can be moved together. Throws SetupError.
void WriteDesktopEntry(const std::string& name, const std::filesystem::path& folder);

/// Moves a finished bundle to `output` and all items of the folder `beside` to its folder. Moves
/// what they replace, with the pieces of an earlier split payload, to the new folder `replaced`.
/// Throws SetupError or a file system error, and leaves everything as it was.
void Publish(const std::filesystem::path& bundle, const std::filesystem::path& beside,
             const std::filesystem::path& output, const std::filesystem::path& replaced);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PUBLISH_H_
