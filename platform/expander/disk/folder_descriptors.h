// Descriptors of the folders in the target tree, a limited number at a time. Each is opened by its
// name relative to the folder that contains it, never through a symbolic link, so no link in the
// tree, not even one made during the expansion, can lead out of it. Each thread has its own.
#ifndef PLATFORM_EXPANDER_DISK_FOLDER_DESCRIPTORS_H_
#define PLATFORM_EXPANDER_DISK_FOLDER_DESCRIPTORS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/expander/common/resources.h"
#include "platform/expander/plan/plan.h"

namespace zephin::expander {

/// A folder of the plan with its open descriptor: the top of what is made.
struct Root {
  int descriptor = -1;
  std::uint32_t folder = 0;
};

class FolderDescriptors {
 public:
  FolderDescriptors(const std::vector<Folder>& folders, Root root);

  /// Returns a descriptor of the folder, valid until the next call, or -1 with errno set. The
  /// folder must be the root or inside of it.
  int Get(std::uint32_t folder);

 private:
  struct Slot {
    std::uint32_t folder = 0;
    Descriptor descriptor;
  };

  const std::vector<Folder>& folders_;
  Root root_;
  std::vector<Slot> slots_;
  std::string leaf_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_DISK_FOLDER_DESCRIPTORS_H_
