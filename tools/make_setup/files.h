#ifndef TOOLS_MAKE_SETUP_FILES_H_
#define TOOLS_MAKE_SETUP_FILES_H_

#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>

// Whole files, and trees of files in an order that doesn't depend on the disk. Everything here
// throws SetupError, with the path in its sentence, where it can't do what it is asked.

namespace zephin::make_setup {

/// All bytes of a file.
std::string ReadFile(const std::filesystem::path& path);
/// Makes or replaces a file. When it returns, every byte has been taken by the system.
void WriteFile(const std::filesystem::path& path, const std::string& bytes);

/// The same block by block; what was written counts only after `Close`.
class FileWriter {
 public:
  explicit FileWriter(const std::filesystem::path& path);
  void Write(std::span<const char> block);
  void Close();

 private:
  void Check() const;
  std::filesystem::path path_;
  std::ofstream stream_;
};

/// Whether `path` names something below the folder that it is relative to, not that folder itself.
bool IsBelow(const std::string& path);

enum class ItemKind { File, Folder, Link };

struct TreeItem {
  /// Below the root, with "/" between names; never empty.
  std::string path;
  ItemKind kind = ItemKind::File;
  /// The nine permission bits; set-id bits are never taken along. Of no meaning for a link.
  std::filesystem::perms mode = std::filesystem::perms::none;
};

/// All that a folder holds, links not followed, a folder before its contents, sorted by the bytes
/// of the paths' names. Refuses devices, sockets and pipes.
std::vector<TreeItem> ListTree(const std::filesystem::path& root);

/// Copies a tree with modes, links and times into a folder that must not stand yet.
void CopyTree(const std::filesystem::path& from, const std::filesystem::path& to);

/// A folder of its own beside `path`, on the same disk, which goes with all it holds when the
/// object goes: what is made in it appears at `path` by a rename, whole or not at all.
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
