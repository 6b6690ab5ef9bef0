#include "platform/expander/plan/plan.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace zephin::expander {
namespace {

std::string_view ParentPath(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

/// Archives made on a Mac have a second tree with attributes that other file systems can't store.
bool IsCompanion(std::string_view path) {
  constexpr std::string_view kTree = "__MACOSX";
  return path.starts_with(kTree) && (path.size() == kTree.size() || path[kTree.size()] == '/');
}

/// The plan's folders by path. A folder is added after those that contain it.
class FolderTable {
 public:
  FolderTable(std::vector<Folder>& folders, std::size_t tableSize)
      : folders_(folders), room_(kLeastRoom + kRoomPerByte * tableSize) {
    folders_.emplace_back();
    indexes_.emplace(std::string_view(), 0);
  }

  /// True once the folders needed more room than the archive's table allows. None is added then.
  bool Full() const { return full_; }

  /// The folder's index, and that of the root if there is no room for it.
  std::uint32_t Need(std::string_view path, std::uint32_t order) {
    if (path == lastPath_) {
      return last_;
    }
    std::uint32_t index = 0;
    if (const auto known = indexes_.find(path); known != indexes_.end()) {
      index = known->second;
    } else if (!TakeRoom(path)) {
      return 0;
    } else {
      Folder folder;
      folder.path = path;
      folder.parent = Need(ParentPath(path), order);
      folder.order = order;
      index = static_cast<std::uint32_t>(folders_.size());
      folders_.push_back(folder);
      indexes_.emplace(path, index);
    }
    lastPath_ = path;
    last_ = index;
    return index;
  }

  bool Has(std::string_view path) const { return indexes_.contains(path); }

 private:
  // An entry takes at least 46 bytes of the table and its name. These figures leave honest archives
  // a new folder for every file, and 20,000 in any case.
  static constexpr std::size_t kRoomPerByte = 2;
  static constexpr std::size_t kLeastRoom = 2U << 20U;

  bool TakeRoom(std::string_view path) {
    constexpr std::size_t kFolder = 64;
    const std::size_t needed = kFolder + path.size();
    full_ = full_ || needed > room_;
    room_ -= full_ ? 0 : needed;
    return !full_;
  }

  std::vector<Folder>& folders_;
  // In bytes of paths, with something added for each folder.
  std::size_t room_;
  bool full_ = false;
  std::unordered_map<std::string_view, std::uint32_t> indexes_;
  // Entries of the same folder usually follow each other.
  std::string_view lastPath_;
  std::uint32_t last_ = 0;
};

void AddFolder(const Entry& entry, FolderTable& table, std::vector<Folder>& folders) {
  if (entry.path.empty()) {
    return;
  }
  Folder& folder = folders[table.Need(entry.path, entry.order)];
  folder.order = entry.order;
  folder.named = true;
  folder.attributes = entry.attributes;
}

Reason ReasonToRefuse(const Entry& entry, std::size_t longestPath) {
  if (entry.path.empty() || entry.path.size() > longestPath) {
    return Reason::NameRefused;
  }
  const bool encrypted = (entry.flags & kEncryptionFlags) != 0;
  return encrypted || !IsKnownMethod(entry.method) ? Reason::Unsupported : Reason::Damaged;
}

/// The entries that are neither refused nor companions.
std::vector<const Entry*> Usable(const std::vector<Entry>& entries, std::size_t longestPath,
                                 Faults& faults) {
  std::vector<const Entry*> usable;
  usable.reserve(entries.size());
  for (const Entry& entry : entries) {
    if (IsCompanion(entry.path)) {
      continue;
    }
    const char* refusal = entry.refusal;
    if (refusal == nullptr && entry.path.size() > longestPath) {
      refusal = "the name is longer than a path can be";
    }
    if (refusal != nullptr) {
      faults.Add(entry.order, entry.storedName, refusal, ReasonToRefuse(entry, longestPath));
    } else {
      usable.push_back(&entry);
    }
  }
  return usable;
}

}  // namespace

Plan MakePlan(const std::vector<Entry>& entries, std::size_t tableSize, std::size_t longestPath,
              Faults& faults) {
  Plan plan;
  FolderTable table(plan.folders, tableSize);
  const std::vector<const Entry*> usable = Usable(entries, longestPath, faults);
  std::unordered_map<std::string_view, const Entry*> last;
  last.reserve(usable.size());
  for (const Entry* entry : usable) {
    if (entry->kind == EntryKind::Folder) {
      AddFolder(*entry, table, plan.folders);
    } else {
      (void)table.Need(ParentPath(entry->path), entry->order);
      last[entry->path] = entry;
    }
    if (table.Full()) {
      faults.Add(Faults::kWholeArchive, entry->storedName,
                 "needs more folders than an archive of this size may have", Reason::NoArchive);
      plan.folders.resize(1);
      return plan;
    }
  }
  plan.files.reserve(last.size());
  for (const Entry* entry : usable) {
    if (entry->kind == EntryKind::Folder || last[entry->path] != entry) {
      continue;
    }
    // Also known only now: a later entry may need this path as a folder.
    if (table.Has(entry->path)) {
      faults.Add(entry->order, entry->storedName, "is a file or link where a folder must be",
                 Reason::Damaged);
      continue;
    }
    auto& list = entry->kind == EntryKind::Link ? plan.links : plan.files;
    list.push_back(*entry);
    list.back().folder = table.Need(ParentPath(entry->path), entry->order);
  }
  // Reading the archive from front to back is the fastest way on every disk.
  const auto before = [](const Entry& a, const Entry& b) { return a.offset < b.offset; };
  if (!std::is_sorted(plan.files.begin(), plan.files.end(), before)) {
    std::sort(plan.files.begin(), plan.files.end(), before);
  }
  return plan;
}

std::string_view OnlyTopItem(const Plan& plan) {
  std::string_view only;
  bool several = false;
  const auto look = [&](std::string_view path) {
    several = several || (!only.empty() && only != path);
    only = path;
  };
  for (std::size_t i = 1; i < plan.folders.size(); ++i) {
    if (plan.folders[i].parent == 0) {
      look(plan.folders[i].path);
    }
  }
  for (const auto* list : {&plan.files, &plan.links}) {
    for (const Entry& entry : *list) {
      if (entry.folder == 0) {
        look(entry.path);
      }
    }
  }
  return several ? std::string_view() : only;
}

}  // namespace zephin::expander
