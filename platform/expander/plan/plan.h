// What an expansion will make: folders, files and links. The plan is complete, and all names are
// checked, before anything is made.
#ifndef PLATFORM_EXPANDER_PLAN_PLAN_H_
#define PLATFORM_EXPANDER_PLAN_PLAN_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/expander/common/faults.h"
#include "platform/expander/zip/entry.h"

namespace zephin::expander {

struct Folder {
  /// Relative to the root; empty for the root itself. Points into memory of the CentralDirectory.
  std::string_view path;
  /// Index of the folder that contains it: smaller than its own, 0 for the root itself.
  std::uint32_t parent = 0;
  /// Place in the archive's order of the folder's own entry, or of the first entry inside of it.
  std::uint32_t order = 0;
  /// The archive has an entry for it; then `attributes` are those of the entry.
  bool named = false;
  Attributes attributes;
  /// The system's error code if the folder could not be made or opened, else 0.
  int code = 0;
  /// The identity of the folder if the expansion made it.
  FileId id;
  /// It existed before the expansion.
  bool existed = false;
  /// It existed and belongs to another user, who alone may set its mode and time: they are not
  /// changed.
  bool foreign = false;

  std::string_view Leaf() const { return path.substr(path.rfind('/') + 1); }
};

struct Plan {
  /// Folder 0 is the root; each folder comes after the one that contains it.
  std::vector<Folder> folders;
  /// One entry for each path. Files are in the order of their data in the archive.
  std::vector<Entry> files;
  std::vector<Entry> links;
};

/// Makes the plan of a table of `tableSize` bytes. Refused entries are added to `faults` and left
/// out. Companion files of a Mac's archive are left out silently. If several entries have the same
/// path, the last one is used. `longestPath` is the most bytes that a path relative to the root may
/// have. If a few deep names ask for more folders than a table of that size can honestly have, that
/// is a fault of the archive as a whole, and the plan is empty: memory and time are bounded by the
/// table's size.
Plan MakePlan(const std::vector<Entry>& entries, std::size_t tableSize, std::size_t longestPath,
              Faults& faults);

/// The path of the only item at the top of the tree. Empty if there is none or more than one.
std::string_view OnlyTopItem(const Plan& plan);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_PLAN_PLAN_H_
