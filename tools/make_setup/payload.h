#ifndef TOOLS_MAKE_SETUP_PAYLOAD_H_
#define TOOLS_MAKE_SETUP_PAYLOAD_H_

#include <cstdint>
#include <filesystem>
#include <string>

#include "tools/make_setup/zip_folder.h"

/// The payload of a bundle: an archive with one top-level folder, scrambled as a whole, in one file
/// or cut into pieces for several discs. All functions throw SetupError if the disk fails them.
namespace zephin::make_setup {

/// Writes the contents of a folder as the file `payload`. `topName` is the name of the archive's
/// top-level folder: that of the target folder, with "Patch" at the end in a patch.
void WritePayload(const std::filesystem::path& folder, const std::string& topName,
                  const std::filesystem::path& payload,
                  Compression compression = Compression::Deflate, const PackReport& report = {});

/// Cuts a payload into pieces of `size` bytes and deletes it. Writes "Data#1" to `resources`, and
/// "Data#2", "Data#3" and so on to "Data#End" to `beside`. Throws SetupError for a size that gives
/// less than two pieces or more than a thousand.
void CutIntoPieces(const std::filesystem::path& payload, std::uint64_t size,
                   const std::filesystem::path& resources, const std::filesystem::path& beside);

/// Whether the installer would read a file of that name beside a bundle as a piece.
bool IsPieceName(const std::string& name);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PAYLOAD_H_
