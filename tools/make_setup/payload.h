#ifndef TOOLS_MAKE_SETUP_PAYLOAD_H_
#define TOOLS_MAKE_SETUP_PAYLOAD_H_

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

// The payload of a bundle: an archive with one top-level folder, scrambled as a whole, in one file
// or cut into pieces for several discs. Everything here throws SetupError.

namespace zephin::make_setup {

/// Makes the file `payload` (in a bundle "Data2") of a folder. `topName` is the name of the target
/// folder, with "Patch" behind it in a patch.
void WritePayload(const std::filesystem::path& folder, const std::string& topName,
                  const std::filesystem::path& payload);

/// Cuts a payload into pieces of `size` bytes and removes it: "Data#1" goes to `resources`,
/// "Data#2", "Data#3" and so on and the last, "Data#End", go to `beside`. Refuses a size that gives
/// less than two pieces or more than a thousand.
void CutIntoPieces(const std::filesystem::path& payload, std::uint64_t size,
                   const std::filesystem::path& resources, const std::filesystem::path& beside);

/// Whether a file beside a bundle is taken for one of its pieces.
bool IsPieceName(const std::string& name);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PAYLOAD_H_
