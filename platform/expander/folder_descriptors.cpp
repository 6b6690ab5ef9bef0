#include "platform/expander/folder_descriptors.h"

#include <fcntl.h>

#include <cerrno>

namespace zephin::expander {

int FolderDescriptors::Get(std::uint32_t folder) {
  if (folder == root_.folder) {
    return root_.descriptor;
  }
  Slot& slot = slots_.at(folder % slots_.size());
  if (slot.descriptor.Open() && slot.folder == folder) {
    return slot.descriptor.Get();
  }
  const int parent = Get(folders_[folder].parent);
  if (parent < 0) {
    return -1;
  }
  leaf_ = folders_[folder].Leaf();
  // The slot may hold the parent itself: it is closed only after this.
  Descriptor opened(
      ::openat(parent, leaf_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!opened.Open()) {
    return -1;
  }
  slot.folder = folder;
  slot.descriptor = std::move(opened);
  return slot.descriptor.Get();
}

}  // namespace zephin::expander
