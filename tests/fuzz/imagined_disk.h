#ifndef TESTS_FUZZ_IMAGINED_DISK_H_
#define TESTS_FUZZ_IMAGINED_DISK_H_

#include <cstdint>
#include <string>
#include <vector>

/// In place of util/files, util/folders and the access rights, for fuzzers whose inputs name paths:
/// functions of the same names that touch nothing. What stands at a path is worked out from its
/// letters, and what the program does to it is written down.
namespace zephin::test {

enum class Deed { Delete, Copy, Rename, MakeFolder, OpenToAll };

struct Act {
  Deed deed;
  std::string path;              ///< Of a copy or a move, the source.
  std::string destination = {};  ///< Of a copy or a move.
};

struct ImaginedDisk {
  std::uint32_t salt = 0;  ///< Another salt, another disk.
  std::vector<Act> acts;

  bool HasFolder(const std::string& path) const { return Kind(path) == 0; }
  /// A file or a folder.
  bool HasAnything(const std::string& path) const { return Kind(path) < 2; }

 private:
  unsigned Kind(const std::string& path) const;
};

/// The one disk.
ImaginedDisk& Disk();

}  // namespace zephin::test

#endif  // TESTS_FUZZ_IMAGINED_DISK_H_
