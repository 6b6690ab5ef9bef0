#ifndef TOOLS_MAKE_SETUP_SETUP_FILE_H_
#define TOOLS_MAKE_SETUP_SETUP_FILE_H_

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/make_setup/record_writer.h"

// The file setup.json of a setup's folder: what its bundle shall hold. The record's fields stand in
// it under their names; a page is the name of a text file or an HTML file, a picture that of a PNG
// file, and a folder of choices, options or payload is just that folder. All names are relative to
// the setup's folder. A short but whole example (README.md in this folder has every field):
//
//   {
//     "fTargetFolder": "Juniper Notes",
//     "fWindowTitle": "Juniper Notes",
//     "fMessage": ["Notes that stay on your own desk.", "Click Install to begin."],
//     "fAgreement": "agreement.txt",
//     "fInfo": { "file": "about.html", "form": "hex" },
//     "fLogoPixelStr": "logo.png",
//     "fLabels": { "install": "Set up", "infoTitle": "About Juniper Notes" },
//     "fPromptToReplace": true,
//     "fInstallChoices": [
//       { "caption": "Light", "source": "choices/light", "folder": "Themes" }
//     ],
//     "fPostCopy": [ { "copy": "Read me.txt", "to": "UserAccount/Juniper.txt" } ],
//     "payload": "payload"
//   }

namespace zephin::make_setup {

/// A folder that is packed for a choice or an option.
struct ArchiveSource {
  /// The archive's file name.
  std::string name;
  std::filesystem::path folder;
  /// An option that is downloaded: the archive is for the publisher's server and stays outside the
  /// bundle.
  bool download = false;
};

/// The installed folder before and after the update.
struct PatchSource {
  std::filesystem::path oldFolder;
  std::filesystem::path newFolder;
};

struct Setup {
  SetupRecord record;
  /// Empty with a patch that is made from `patch`.
  std::filesystem::path payload;
  std::optional<PatchSource> patch;
  /// Bytes of a piece; 0 for a payload in one file.
  std::uint64_t pieceSize = 0;
  /// Files and application bundles that lie beside the record, under their own names.
  std::vector<std::filesystem::path> helpers;
  std::vector<ArchiveSource> archives;
};

/// Reads `folder`/setup.json and the pages and pictures that it names, with `values` in place of
/// each `${NAME}`. Throws SetupError, with file and field, for everything that a record can't hold
/// or that the stub would take for something else.
Setup ReadSetup(const std::filesystem::path& folder,
                const std::map<std::string, std::string>& values);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_SETUP_FILE_H_
