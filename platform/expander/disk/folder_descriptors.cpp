#include "platform/expander/disk/folder_descriptors.h"

#include <fcntl.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>

namespace zephin::expander {
namespace {

/// The number of folders that one thread keeps open: a part of the process's limit.
std::size_t SlotCount() {
  constexpr rlim_t kMost = 256;
  constexpr rlim_t kLeast = 1;
  constexpr rlim_t kPart = 8;
  rlimit limit{};
  const bool known = ::getrlimit(RLIMIT_NOFILE, &limit) == 0;
  return known ? std::clamp(limit.rlim_cur / kPart, kLeast, kMost) : kLeast;
}

}  // namespace

FolderDescriptors::FolderDescriptors(const std::vector<Folder>& folders, Root root)
    : folders_(folders), root_(root), slots_(std::min(SlotCount(), folders.size())) {}

int FolderDescriptors::Get(std::uint32_t folder) {
  if (folder == root_.folder) {
    return root_.descriptor;
  }
  Slot& slot = slots_[folder % slots_.size()];
  if (slot.descriptor.IsOpen() && slot.folder == folder) {
    return slot.descriptor.Number();
  }
  // The folders above are opened first, each by its name alone: a path with slashes would follow
  // links in its middle.
  const int parent = Get(folders_[folder].parent);
  if (parent < 0) {
    return -1;
  }
  leaf_ = folders_[folder].Leaf();
  // The slot may own the parent's descriptor, so it is replaced only after this call.
  Descriptor opened(
      ::openat(parent, leaf_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!opened.IsOpen()) {
    return -1;
  }
  slot.folder = folder;
  slot.descriptor = std::move(opened);
  return slot.descriptor.Number();
}

}  // namespace zephin::expander
