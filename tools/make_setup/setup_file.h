#ifndef TOOLS_MAKE_SETUP_SETUP_FILE_H_
#define TOOLS_MAKE_SETUP_SETUP_FILE_H_

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "setup/record.h"
#include "tools/make_setup/packed_pieces.h"

/// The file setup.json in a setup's folder, which describes one bundle. The record's fields have
/// their own names there; a page is the name of a text file or an HTML file, a picture that of a
/// PNG file, and the contents of choices, options and payload are folders. All names are relative
/// to the setup's folder. A short but complete example (README.md in this folder has every field):
///
///   {
///     "fTargetFolder": "Juniper Notes",
///     "fWindowTitle": "Juniper Notes",
///     "fMessage": ["Notes that stay on your own desk.", "Click Install to begin."],
///     "fAgreement": "agreement.txt",
///     "fInfo": { "file": "about.html", "form": "hex" },
///     "fLogoPixelStr": "logo.png",
///     "fLabels": { "install": "Set up", "infoTitle": "About Juniper Notes" },
///     "fPromptToReplace": true,
///     "fInstallChoices": [
///       { "caption": "Light", "source": "choices/light", "folder": "Themes" }
///     ],
///     "fPostCopy": [ { "copy": "Read me.txt", "to": "UserAccount/Juniper.txt" } ],
///     "payload": "payload"
///   }
namespace zephin::make_setup {

/// A folder that is packed for a choice or an option.
struct ArchiveSource {
  std::string name;              ///< File name of the archive.
  std::filesystem::path folder;  ///< Its contents.
  /// True for an option that is downloaded: the archive is written beside the bundle, for the
  /// publisher's server.
  bool download = false;
};

/// The installed folder before and after an update.
struct PatchSource {
  std::filesystem::path oldFolder;
  std::filesystem::path newFolder;
};

/// Everything that goes into one bundle.
struct Setup {
  SetupRecord record;
  std::filesystem::path payload;                   ///< Empty if `patch` is set.
  std::optional<PatchSource> patch;                ///< The payload is made from these two folders.
  std::uint64_t pieceSize = 0;                     ///< In bytes; 0 for a payload in one file.
  Compression compression = Compression::Deflate;  ///< Of the payload and the archives.
  /// Files and application bundles that are copied beside the record under their own names.
  std::vector<std::filesystem::path> helpers;
  std::vector<ArchiveSource> archives;
};

/// Reads `folder`/setup.json and the pages and pictures that it names, with `values` in place of
/// each `${NAME}`. Throws SetupError, with file and field, for everything that a record can't hold
/// or that the installer would read as something else.
Setup ReadSetup(const std::filesystem::path& folder,
                const std::map<std::string, std::string>& values);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_SETUP_FILE_H_
