// What an expansion is going to do: the folders, files and links that the archive asks for, after
// all names were checked and before anything is made.
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
  /// Below the root; empty for the root itself. Texts as in Entry.
  std::string_view path;
  /// Index of the folder that holds it: always smaller than its own, 0 for the root.
  std::uint32_t parent = 0;
  /// Place in the archive's order of the entry that names it, or of the first one in it.
  std::uint32_t order = 0;
  /// An entry of the archive names it; then `attributes` are the archive's.
  bool named = false;
  Attributes attributes;
  /// What came of it: the system's error code if it could not be made or entered, else 0.
  int code = 0;
  /// It stood before.
  bool stood = false;

  std::string_view Leaf() const { return path.substr(path.rfind('/') + 1); }
};

struct Plan {
  /// The root, which is folder 0, then each folder after the one that holds it.
  std::vector<Folder> folders;
  /// Each path once; in the order of their data in the archive.
  std::vector<Entry> files;
  std::vector<Entry> links;
};

/// Makes the plan. Refused entries are added to `faults` and are not in it; companion files of a
/// Mac's archive are dropped without a word; of several entries for one path the last counts.
/// `longestPath`: bytes that a path below the root may have.
Plan MakePlan(const std::vector<Entry>& entries, std::size_t longestPath, Faults& faults);

/// The one folder, file or link that everything in the plan lies in or is; empty if there is
/// nothing or more than one such thing.
std::string_view OnlyTopItem(const Plan& plan);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_PLAN_PLAN_H_
