#include "tools/make_setup/patch_tree.h"

#include <map>
#include <string>

#include "platform/framework/text.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

/// In a name: the installer deletes the item of that name without it.
constexpr const char* kMarker = "*Delete*";
/// Bytes of a file name on the file systems of all desktops.
constexpr std::size_t kLongestName = 255;

using Items = std::map<std::string, TreeItem>;

std::string Name(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

std::string Parent(const std::string& path) {
  return path.substr(0, path.find('/') == std::string::npos ? 0 : path.rfind('/'));
}

Items Index(const fs::path& root) {
  Items items;
  for (const TreeItem& item : ListTree(root)) {
    // Of either tree: the installer would delete an item that a file of the patch names by chance.
    if (InStr(Utf8(Name(item.path)), kMarker) != 0) {
      throw SetupError(item.path + ": must not contain " + Quoted(kMarker) +
                       ", which marks a deletion");
    }
    items.emplace(item.path, item);
  }
  return items;
}

class PatchMaker {
 public:
  PatchMaker(fs::path oldTree, fs::path newTree, fs::path patch)
      : oldTree_(std::move(oldTree)),
        newTree_(std::move(newTree)),
        patch_(std::move(patch)),
        old_(Index(oldTree_)),
        new_(Index(newTree_)) {}

  void Make() {
    fs::create_directory(patch_);
    // Names are looked up in both directions; a rename is a deletion and an addition.
    for (const auto& [path, item] : old_) {
      if (!new_.contains(path)) {
        Delete(item);
      }
    }
    for (const auto& [path, item] : new_) {
      const auto before = old_.find(path);
      if (before == old_.end()) {
        Add(item);
      } else if (before->second.kind != item.kind) {
        throw SetupError(
            path + ": must stay an item of its kind: a patch can't replace one by another kind");
      } else {
        Change(before->second, item);
      }
    }
  }

 private:
  void Delete(const TreeItem& item) {
    const std::string& path = item.path;
    const bool atRoot = Parent(path).empty();
    if (!atRoot && !new_.contains(path.substr(0, path.find('/')))) {
      return;  // Its folder at the root is deleted with all contents.
    }
    if (item.kind == ItemKind::Folder && !atRoot) {
      throw SetupError(path + ": must not be deleted: a patch deletes folders at the root only");
    }
    RefuseHidden(item);
    // The file system's limit, which the publisher's own names may be close to.
    if (Name(path).size() + std::string(kMarker).size() > kLongestName) {
      throw SetupError(path + ": must have a shorter name: a patch appends " + Quoted(kMarker) +
                       " to delete it");
    }
    // The marker is of the kind of what it deletes.
    const fs::path marker = patch_ / (path + kMarker);
    if (item.kind == ItemKind::Folder) {
      fs::create_directory(marker);
    } else {
      fs::create_directories(marker.parent_path());
      WriteFile(marker, "");
    }
  }

  void Add(const TreeItem& item) {
    if (item.kind == ItemKind::Link) {
      throw SetupError(item.path + ": must not be new: a patch can't add a link");
    }
    // Folders come with their files.
    if (item.kind == ItemKind::Folder) {
      RefuseWithoutFiles(item.path);
      return;
    }
    const std::string parent = Parent(item.path);
    // The installer treats a path that ends in ".app" as a file and creates its parent folder only.
    if (!parent.empty() && !old_.contains(parent) && TextEquals(Right(Utf8(parent), 4), ".app")) {
      throw SetupError(
          item.path +
          R"(: must be in a folder below: a patch can't add it right into a new ".app")");
    }
    RefuseHidden(item);
    Take(item);
  }

  void Change(const TreeItem& before, const TreeItem& after) {
    const fs::path from = oldTree_ / after.path;
    const fs::path to = newTree_ / after.path;
    if (after.kind == ItemKind::Link && fs::read_symlink(from) != fs::read_symlink(to)) {
      throw SetupError(after.path + ": must not change: a patch can't change a link");
    }
    if (after.kind != ItemKind::File ||
        // Sizes first: most files that differ need not be read.
        (before.mode == after.mode && fs::file_size(from) == fs::file_size(to) &&
         ReadFile(from) == ReadFile(to))) {
      return;
    }
    RefuseHidden(after);
    Take(after);
  }

  void RefuseWithoutFiles(const std::string& folder) const {
    for (auto below = new_.upper_bound(folder + "/");
         below != new_.end() && below->first.starts_with(folder + "/"); ++below) {
      if (below->second.kind == ItemKind::File) {
        return;
      }
    }
    // The installer creates folders only on the way to a file.
    throw SetupError(folder + ": must contain a file: a patch can't add an empty folder");
  }

  static void RefuseHidden(const TreeItem& item) {
    if (item.kind != ItemKind::Folder && Name(item.path).starts_with('.')) {
      throw SetupError(item.path + ": must stay as it is: a patch ignores hidden files");
    }
  }

  void Take(const TreeItem& item) {
    fs::create_directories((patch_ / item.path).parent_path());
    fs::copy_file(newTree_ / item.path, patch_ / item.path);
    // So that the archive has the times of the new version.
    fs::last_write_time(patch_ / item.path, fs::last_write_time(newTree_ / item.path));
  }

  fs::path oldTree_;
  fs::path newTree_;
  fs::path patch_;
  Items old_;
  Items new_;
};

}  // namespace

void MakePatchTree(const fs::path& oldTree, const fs::path& newTree, const fs::path& patch) {
  PatchMaker(oldTree, newTree, patch).Make();
}

}  // namespace zephin::make_setup
