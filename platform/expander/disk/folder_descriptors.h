// Open folders of the tree that is made, a bounded number of them. Each is opened by its name in
// the one above it and never through a symbolic link, so that nothing that stands in the tree, or
// comes to stand there meanwhile, can lead out of it. One per thread.
#ifndef PLATFORM_EXPANDER_DISK_FOLDER_DESCRIPTORS_H_
#define PLATFORM_EXPANDER_DISK_FOLDER_DESCRIPTORS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/expander/common/resources.h"
#include "platform/expander/plan/plan.h"

namespace zephin::expander {

/// The folder of the plan whose place on disk is known, with its descriptor.
struct Root {
  int descriptor = -1;
  std::uint32_t folder = 0;
};

class FolderDescriptors {
 public:
  FolderDescriptors(const std::vector<Folder>& folders, Root root);

  /// A descriptor of the folder, valid until the next call, or -1 with errno set. The folder is the
  /// root or lies in it.
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
