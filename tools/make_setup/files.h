#ifndef TOOLS_MAKE_SETUP_FILES_H_
#define TOOLS_MAKE_SETUP_FILES_H_

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>

/// Whole files, and trees of files in an order that doesn't depend on the disk. All functions throw
/// SetupError, with the path in its message, if they can't do their work.
namespace zephin::make_setup {

/// All bytes of a file.
std::string ReadFile(const std::filesystem::path& path);
/// Creates or replaces a file. When it returns, the system has accepted every byte.
void WriteFile(const std::filesystem::path& path, const std::string& bytes);

/// The same block by block. A file is complete only after `Close`.
class FileWriter {
 public:
  explicit FileWriter(const std::filesystem::path& path);
  void Write(std::span<const char> block);
  /// Replaces bytes that have been written. The next `Write` appends again.
  void Overwrite(std::uint64_t position, std::span<const char> block);
  void Close();

 private:
  void Check() const;
  std::filesystem::path path_;
  std::ofstream stream_;
};

/// Whether a relative path leads below the folder that it is relative to. False for that folder.
bool IsBelow(const std::string& path);

/// What is packed: the number of files, and the bytes of their contents.
struct Contents {
  std::uint64_t files = 0;
  std::uint64_t bytes = 0;
};

enum class ItemKind { File, Folder, Link };

struct TreeItem {
  std::string path;  ///< Below the root, with "/" between names; never empty.
  ItemKind kind = ItemKind::File;
  /// The nine permission bits without the set-id bits, which no archive brings. Unset for a link.
  std::filesystem::perms mode = std::filesystem::perms::none;
  std::uint64_t size = 0;  ///< Of a file, in bytes.
};

/// All items below a folder, each folder before its contents, sorted by the bytes of their names.
/// Links are not followed. Throws SetupError for a device, a socket or a pipe.
std::vector<TreeItem> ListTree(const std::filesystem::path& root);

/// Copies a folder with modes, links and times. `to` must not exist.
void CopyTree(const std::filesystem::path& from, const std::filesystem::path& to);

/// A new folder beside `path`, thus on the same disk: what is made in it can be renamed to `path`,
/// where it appears whole or not at all. The destructor deletes the folder with its contents.
class ScratchFolder {
 public:
  explicit ScratchFolder(const std::filesystem::path& path);
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_FILES_H_
