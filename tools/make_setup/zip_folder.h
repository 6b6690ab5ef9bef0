#ifndef TOOLS_MAKE_SETUP_ZIP_FOLDER_H_
#define TOOLS_MAKE_SETUP_ZIP_FOLDER_H_

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "tools/make_setup/packed_pieces.h"
#include "tools/make_setup/zip_writer.h"

namespace zephin::make_setup {

/// Receives the number of files and the bytes of content that have been packed since the last call.
/// An exception that it throws ends the work.
using PackReport = std::function<void(std::uint64_t files, std::uint64_t bytes)>;

struct ZipOptions {
  /// The folder at the archive's top level that has the contents; if empty, they are at the top
  /// level themselves, and there must be some.
  std::string topName = {};
  ZipForm form = ZipForm::Plain;
  Compression compression = Compression::Deflate;
  unsigned threads = 0;  ///< 0 for one on each processor. The archive doesn't depend on it.
  PackReport report = {};
};

/// Writes a ".zip" archive of the contents of `folder` in a fixed order, with permissions, times,
/// links as links, and names in UTF-8. Contents of any size are packed in bounded memory. Throws
/// SetupError, and leaves no archive, for a name that is not UTF-8 or that the expansion drops
/// ("__MACOSX"), and if an item can't be read or the archive can't be written.
void ZipFolder(const std::filesystem::path& folder, const std::filesystem::path& archive,
               const ZipOptions& options = {});

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_ZIP_FOLDER_H_
