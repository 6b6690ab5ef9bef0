#ifndef TESTS_SUPPORT_SCRATCH_FOLDER_H_
#define TESTS_SUPPORT_SCRATCH_FOLDER_H_

#include <filesystem>
#include <map>
#include <string>

namespace zephin::test {

/// A new folder for one test, in `parent`. It is deleted with the object.
class ScratchFolder {
 public:
  explicit ScratchFolder(
      const std::filesystem::path& parent = std::filesystem::temp_directory_path());
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// Absolute, links resolved.
  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

/// Writes a file and creates missing parent folders.
void WriteFile(const std::filesystem::path& path, const std::string& content);
/// The content of a file; fails the test if it can't be read.
std::string ReadFile(const std::filesystem::path& path);
/// Printable bytes that hardly compress, the same in each call.
std::string Noise(std::size_t length);
/// Everything below a folder: relative path to content, "/" for folders, "-> target" for links.
using Contents = std::map<std::string, std::string>;
Contents Tree(const std::filesystem::path& folder);

}  // namespace zephin::test

#endif  // TESTS_SUPPORT_SCRATCH_FOLDER_H_
