// The zip expander: puts the contents of an archive on disk, straight into a folder or beside the
// archive. Nothing in an archive can reach outside its folder, and nothing passes for expanded that
// isn't. It makes no archives and lists none.
#ifndef PLATFORM_EXPANDER_EXPANDER_H_
#define PLATFORM_EXPANDER_EXPANDER_H_

#include <cstdint>
#include <string>

namespace zephin::expander {

/// What came of an expansion.
struct Result {
  /// Entries of the archive that stand on disk whole: files, links and folders that it names.
  std::uint64_t expanded = 0;
  /// Entries that were refused or lost, and faults of the archive as a whole.
  std::uint64_t faults = 0;
  /// The first of them in the archive's order, "NAME: why" on one line without a line feed,
  /// whatever bytes the name holds; empty when there is none.
  std::string firstFault;
  /// What the contents stand under, for an expansion beside the archive: a name, no path. Empty
  /// when nothing was made, and for an expansion into a folder.
  std::string placedAs;

  /// True if every byte of every entry is on disk (companion files of a Mac's archive aside, which
  /// are dropped).
  bool Complete() const { return faults == 0; }
  /// The line for standard error, without a line feed: the first fault and how many more there are.
  /// Empty when there is none.
  std::string Line() const {
    return faults > 1 ? firstFault + " (and " + std::to_string(faults - 1) + " more)" : firstFault;
  }
};

/// Both functions read and change the process's file creation mask for a moment at their start, use
/// two threads while they run, and may be called again, one after the other. Paths are bytes as the
/// system takes them; a relative one counts from the working folder. No exception leaves them but
/// std::bad_alloc and std::system_error (no thread to be had).

/// Expands the archive's contents straight into the folder, which is made with all above it before
/// the archive is read. Merges into what stands there and replaces files and links of the same
/// name. An entry that is refused leaves nothing of its own; what stood under its name before may
/// be gone.
[[nodiscard]] Result ExpandInto(const std::string& archivePath, const std::string& folderPath);

/// Expands beside the archive: one top-level item under its own name, several into a new folder
/// named after the archive, under "Name 2", "Name 3", ... where the name is taken; never into what
/// stands. The archive is opened once at the start and may be deleted from then on. Ends early,
/// with a fault, when the folders that it made are taken away; they are not made again.
[[nodiscard]] Result ExpandBeside(const std::string& archivePath);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_EXPANDER_H_
