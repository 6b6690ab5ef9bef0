#include "platform/expander/steps/expansion.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string_view>

#include "platform/expander/disk/free_space.h"
#include "platform/expander/report/report.h"
#include "platform/expander/zip/entry_data.h"

namespace zephin::expander {
namespace {

constexpr mode_t kPlainMode = 0777;

std::array<timespec, 2> ChangeTime(const Attributes& attributes) {
  return {timespec{0, UTIME_OMIT}, timespec{attributes.seconds, attributes.nanoseconds}};
}

/// Prepares a folder that existed before. If its mode forbids writing to its owner, the mode is
/// changed until the end of the expansion.
int EnterExisting(Folder& folder, int descriptor) {
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) {
    return errno;
  }
  folder.existed = true;
  folder.foreign = ::geteuid() != 0 && status.st_uid != ::geteuid();
  const mode_t mode = status.st_mode & 07777;
  // If the mode can't be changed, making something in the folder reports why.
  if (!folder.foreign && (mode & S_IRWXU) != S_IRWXU && ::fchmod(descriptor, mode | S_IRWXU) == 0 &&
      !folder.attributes.hasMode) {
    folder.attributes.mode = static_cast<std::uint16_t>(mode);
    folder.attributes.hasMode = true;
  }
  return 0;
}

int MakeFolder(Site& site, FolderDescriptors& descriptors, std::uint32_t index) {
  Folder& folder = site.plan.folders[index];
  // One cause for a whole branch: the fault of each entry names what has failed first.
  if (const int code = site.plan.folders[folder.parent].code; code != 0) {
    return code;
  }
  const int parent = descriptors.Get(folder.parent);
  if (parent < 0) {
    return errno;
  }
  const std::string leaf(folder.Leaf());
  if (::mkdirat(parent, leaf.c_str(), kPlainMode) == 0) {
    folder.id = FileId::At(parent, leaf.c_str());
    return 0;
  }
  if (errno != EEXIST) {
    return errno;
  }
  const int descriptor = descriptors.Get(index);
  if (descriptor < 0) {
    // ELOOP means a link. It is reported like a file in place of the folder.
    return errno == ELOOP ? ENOTDIR : errno;
  }
  return EnterExisting(folder, descriptor);
}

/// Sets mode and time. Most folders have their mode since they were made; those are not opened
/// again.
Cause FinishFolder(const Site& site, FolderDescriptors& descriptors, std::uint32_t index) {
  const Folder& folder = site.plan.folders[index];
  const Attributes& attributes = folder.attributes;
  // The mode that the system gives to a new folder.
  const mode_t fresh = kPlainMode & ~site.mask;
  const bool setMode = attributes.hasMode && (folder.existed || attributes.mode != fresh);
  if (setMode || index == site.root.folder) {
    const int descriptor = descriptors.Get(index);
    Cause cause;
    if (descriptor < 0 || (setMode && ::fchmod(descriptor, attributes.mode) != 0)) {
      cause = Cause::System(errno, kModeNotSet);
    }
    if (folder.named && ::futimens(descriptor, ChangeTime(attributes).data()) != 0 && !cause) {
      cause = Cause::System(errno, kTimeNotSet);
    }
    return cause;
  }
  const int parent = descriptors.Get(folder.parent);
  const bool set =
      parent >= 0 && ::utimensat(parent, std::string(folder.Leaf()).c_str(),
                                 ChangeTime(attributes).data(), AT_SYMLINK_NOFOLLOW) == 0;
  return set ? Cause() : Cause::System(errno, kTimeNotSet);
}

/// Finishes one folder, and adds a fault if it could not be made or finished.
void Finish(Site& site, FolderDescriptors& descriptors, std::uint32_t index) {
  const Folder& folder = site.plan.folders[index];
  Cause cause = Cause::System(folder.named ? folder.code : 0);
  if (folder.code == 0 && !folder.foreign &&
      (folder.named || (folder.existed && folder.attributes.hasMode))) {
    cause = FinishFolder(site, descriptors, index);
  }
  if (cause) {
    site.faults.Add(folder.order, folder.path, cause);
  }
}

/// Reads a link's target. False if it is not valid; then the fault has been added.
bool ReadTarget(Site& site, const Entry& entry, Unpacker& unpacker, std::string& target) {
  // Entries with longer targets were refused when the table was read.
  std::array<char, PATH_MAX> buffer{};
  unpacker.reader.SetEnd(entry.end);
  std::string_view data;
  Cause cause = IsSmall(entry) ? ReadSmallEntry(entry, unpacker, buffer.data(), data)
                               : Cause::Fixed("its data are damaged");
  if (!cause && data.find('\0') != std::string_view::npos) {
    cause = Cause::Fixed("its target holds a NUL byte");
  }
  if (cause) {
    site.faults.Add(entry.order, entry.storedName, cause);
  }
  target = data;
  return !cause;
}

/// Makes a link. `attributes` is set if only its time could not be set.
Cause MakeLink(Site& site, Entry& entry, int folder, const std::string& target, Cause& attributes) {
  const std::string leaf(entry.Leaf());
  const auto make = [&] { return ::symlinkat(target.c_str(), folder, leaf.c_str()) == 0; };
  bool made = make();
  if (!made && errno == EEXIST) {
    if (const Cause cause = ClearName(folder, leaf.c_str(), site.replacing)) {
      return cause;
    }
    made = make();
  }
  if (!made) {
    return Cause::System(errno);
  }
  entry.id = FileId::At(folder, leaf.c_str());
  site.replacing.made.Add(entry.id);
  if (::utimensat(folder, leaf.c_str(), ChangeTime(entry.attributes).data(), AT_SYMLINK_NOFOLLOW) !=
      0) {
    attributes = Cause::System(errno, kTimeNotSet);
  }
  return {};
}

/// The size of the files for which `counts`, in bytes; not above the largest number.
template <class Predicate>
std::uint64_t BytesOf(const Plan& plan, Predicate counts) {
  std::uint64_t bytes = 0;
  for (const Entry& entry : plan.files) {
    if (counts(entry)) {
      bytes += std::min(entry.size, std::numeric_limits<std::uint64_t>::max() - bytes);
    }
  }
  return bytes;
}

}  // namespace

void MakeFolders(Site& site) {
  site.report.SetWork(BytesOf(site.plan, [](const Entry&) { return true; }),
                      site.plan.files.size() + site.plan.links.size());
  FolderDescriptors descriptors(site.plan.folders, site.root);
  for (std::uint32_t i = 1; i < site.plan.folders.size() && !site.control.Stopped(); ++i) {
    if (i != site.root.folder) {
      site.plan.folders[i].code = MakeFolder(site, descriptors, i);
    }
  }
}

void MakeLinks(Site& site) {
  if (site.plan.links.empty()) {
    return;
  }
  FolderDescriptors descriptors(site.plan.folders, site.root);
  Unpacker unpacker(site.file);
  std::string target;
  for (Entry& entry : site.plan.links) {
    if (site.control.Stopped()) {
      return;
    }
    if (FolderLost(site, entry) || !ReadTarget(site, entry, unpacker, target)) {
      continue;
    }
    const int folder = descriptors.Get(entry.folder);
    Cause attributes;
    const Cause cause =
        folder < 0 ? Cause::System(errno) : MakeLink(site, entry, folder, target, attributes);
    entry.made = !cause;
    if (cause) {
      site.faults.Add(entry.order, entry.storedName, cause);
      NoteLoss(site);
    } else if (attributes) {
      site.faults.Add(entry.order, entry.storedName, attributes);
    }
  }
}

void FinishFolders(Site& site) {
  FolderDescriptors descriptors(site.plan.folders, site.root);
  // From the inside out: a mode may forbid to enter the folder, and then what is in it.
  for (auto i = static_cast<std::uint32_t>(site.plan.folders.size());
       i-- > 1 && !site.control.Stopped();) {
    if (i != site.root.folder) {
      Finish(site, descriptors, i);
    }
  }
}

void FinishRoot(Site& site) {
  if (site.root.folder != 0 && !site.control.Stopped()) {
    FolderDescriptors descriptors(site.plan.folders, site.root);
    Finish(site, descriptors, site.root.folder);
  }
}

void RemoveRemains(Site& site) {
  FolderDescriptors descriptors(site.plan.folders, site.root);
  for (const auto* list : {&site.plan.files, &site.plan.links}) {
    for (const Entry& entry : *list) {
      const int folder = entry.made ? descriptors.Get(entry.folder) : -1;
      if (folder >= 0) {
        RemoveIfSame(folder, std::string(entry.Leaf()).c_str(), entry.id, 0);
      }
    }
  }
  for (auto i = static_cast<std::uint32_t>(site.plan.folders.size()); i-- > 1;) {
    const Folder& folder = site.plan.folders[i];
    if (!folder.id) {
      continue;
    }
    if (const int parent = descriptors.Get(folder.parent); parent >= 0) {
      RemoveIfSame(parent, std::string(folder.Leaf()).c_str(), folder.id, AT_REMOVEDIR);
    }
  }
}

void FinishReport(Site& site) {
  if (site.control.Stopped()) {
    site.report.SetTakenAway();
    return;
  }
  // The disk may have been filled by others after the space was checked.
  const auto missing = [](const Entry& entry) { return !entry.made; };
  site.report.SetSpace(BytesOf(site.plan, missing), FreeBytes(site.root.descriptor));
}

std::uint64_t CountExpanded(const Site& site) {
  const auto made = [](const Entry& entry) { return entry.made; };
  const auto isDone = [](const Folder& folder) { return folder.named && folder.code == 0; };
  const Plan& plan = site.plan;
  return static_cast<std::uint64_t>(
      std::count_if(plan.files.begin(), plan.files.end(), made) +
      std::count_if(plan.links.begin(), plan.links.end(), made) +
      std::count_if(plan.folders.begin(), plan.folders.end(), isDone));
}

bool FolderLost(Site& site, const Entry& entry) {
  const int code = site.plan.folders[entry.folder].code;
  if (code == ENOTDIR) {
    site.faults.Add(entry.order, entry.storedName, "a file or link is in the place of its folder",
                    Reason::InTheWay);
  } else if (code != 0) {
    site.faults.Add(entry.order, entry.storedName,
                    "its folder could not be made: " + Cause::System(code).Text(), ReasonOf(code));
  }
  return code != 0;
}

void NoteLoss(Site& site) {
  struct stat status {};
  // A deleted folder has no links, but stays usable through its descriptor.
  if (::fstat(site.root.descriptor, &status) == 0 && status.st_nlink == 0) {
    site.control.Stop();
  }
}

std::size_t RoomBelow(const std::string& folderPath) {
  const std::unique_ptr<char, decltype(&::free)> real(::realpath(folderPath.c_str(), nullptr),
                                                      &::free);
  const std::size_t length = real ? std::strlen(real.get()) : folderPath.size();
  // Room for the slash between the two and for the final NUL.
  return length + 2 < PATH_MAX ? PATH_MAX - 2 - length : 0;
}

mode_t CreationMask() {
  // Another thread may make a file at this very moment: it is better private than open to all.
  constexpr mode_t kCautious = 077;
  const mode_t mask = ::umask(kCautious);
  (void)::umask(mask);
  return mask;
}

}  // namespace zephin::expander
