#ifndef TOOLS_MAKE_SETUP_TARBALL_H_
#define TOOLS_MAKE_SETUP_TARBALL_H_

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace zephin::make_setup {

/// An item of a tarball: a file, or a folder with everything below it.
struct TarballItem {
  std::filesystem::path source;
  std::string name;  ///< In the tarball, with "/" between names.
};

struct TarballOptions {
  std::int64_t time = 0;  ///< Of all items, in seconds since 1970.
  unsigned threads = 0;   ///< 0 for one on each processor. The tarball doesn't depend on it.
  /// Called often. An exception that it throws ends the work.
  std::function<void()> report = {};
};

/// Writes a ".tar.gz" file, which programs of every desktop unpack with its modes. The same items
/// give the same bytes on every machine: names are sorted, the owner is root, the time is one for
/// all, and modes are 0755 for folders and programs and 0644 for other files, whatever umask the
/// publisher has.
///
/// Takes as much room again for a moment: the tar file is made beside the tarball first. Throws
/// SetupError if an item can't be read or the tarball can't be written; what is written by then
/// remains.
void WriteTarball(const std::filesystem::path& tarball, const std::vector<TarballItem>& items,
                  const TarballOptions& options);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_TARBALL_H_
