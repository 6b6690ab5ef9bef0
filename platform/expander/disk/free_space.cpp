#include "platform/expander/disk/free_space.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace zephin::expander {
namespace {

std::uint64_t AddSaturated(std::uint64_t a, std::uint64_t b) {
  const std::uint64_t sum = a + b;
  return sum < a ? std::numeric_limits<std::uint64_t>::max() : sum;
}

std::uint64_t MultiplySaturated(std::uint64_t a, std::uint64_t b) {
  return b != 0 && a > std::numeric_limits<std::uint64_t>::max() / b
             ? std::numeric_limits<std::uint64_t>::max()
             : a * b;
}

/// Bytes and number of the items that already exist at the plan's paths.
struct Found {
  std::uint64_t bytes = 0;
  std::uint64_t items = 0;
};

/// A folder counts as one block, as it does in the sum of what is needed.
Found CountExisting(const Plan& plan, int folder, std::uint64_t block) {
  constexpr std::uint64_t kStatBlock = 512;
  Found found;
  struct stat status {};
  const auto exists = [&](std::string_view path) {
    return ::fstatat(folder, std::string(path).c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
  };
  for (const auto* list : {&plan.files, &plan.links}) {
    for (const Entry& entry : *list) {
      if (exists(entry.path) && status.st_nlink == 1) {
        found.bytes += static_cast<std::uint64_t>(status.st_blocks) * kStatBlock;
        ++found.items;
      }
    }
  }
  for (const Folder& made : plan.folders) {
    if (!made.path.empty() && exists(made.path)) {
      found.bytes += block;
      ++found.items;
    }
  }
  return found;
}

// Part of a disk may be reserved for the system's own user.
bool IsSystem() {
  return ::geteuid() == 0;
}

std::uint64_t FreeBytes(const struct statvfs& disk) {
  return MultiplySaturated(IsSystem() ? disk.f_bfree : disk.f_bavail, disk.f_frsize);
}

}  // namespace

std::string Shortage::Text() const {
  return "needs " + std::to_string(needed) +
         (reason == Reason::NoSpace ? " bytes" : " files and folders") + ", but only " +
         std::to_string(free) + " are free on the disk";
}

std::uint64_t FreeBytes(int folder) {
  struct statvfs disk {};
  return ::fstatvfs(folder, &disk) == 0 ? FreeBytes(disk) : 0;
}

std::optional<Shortage> FindShortage(const Plan& plan, int folder, Existing existing) {
  struct statvfs disk {};
  if (::fstatvfs(folder, &disk) != 0 || disk.f_blocks == 0 || disk.f_frsize == 0) {
    return std::nullopt;
  }
  const std::uint64_t block = disk.f_frsize;
  const std::uint64_t items = plan.files.size() + plan.links.size() + plan.folders.size() - 1;
  // Most disks take a block for a folder, some also for a link.
  std::uint64_t needed = MultiplySaturated(items - plan.files.size(), block);
  for (const Entry& entry : plan.files) {
    const std::uint64_t blocks = entry.size / block + (entry.size % block != 0 ? 1 : 0);
    needed = AddSaturated(needed, MultiplySaturated(blocks, block));
  }
  const std::uint64_t free = FreeBytes(disk);
  const std::uint64_t freeItems = IsSystem() ? disk.f_ffree : disk.f_favail;
  const bool countsItems = disk.f_files != 0;
  if (needed <= free && (!countsItems || items <= freeItems)) {
    return std::nullopt;
  }
  const Found found = existing == Existing::Replace ? CountExisting(plan, folder, block) : Found{};
  if (needed > AddSaturated(free, found.bytes)) {
    return Shortage{Reason::NoSpace, needed, free};
  }
  if (countsItems && items > AddSaturated(freeItems, found.items)) {
    return Shortage{Reason::NoFileSlots, items, freeItems};
  }
  return std::nullopt;
}

}  // namespace zephin::expander
