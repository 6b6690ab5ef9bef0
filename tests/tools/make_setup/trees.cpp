#include "tests/tools/make_setup/trees.h"

#include <gtest/gtest.h>

#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLinkMark = "-> ";
constexpr const char* kExecutableMark = "+x ";

}  // namespace

void WriteTree(const fs::path& root, const Tree& tree) {
  fs::create_directories(root);
  for (const auto& [path, content] : tree) {
    const fs::path place = root / path;
    if (path.ends_with('/')) {
      fs::create_directories(place);
      continue;
    }
    fs::create_directories(place.parent_path());
    if (content.starts_with(kLinkMark)) {
      fs::create_symlink(content.substr(3), place);
    } else if (content.starts_with(kExecutableMark)) {
      WriteFile(place, content.substr(3));
      fs::permissions(place, fs::perms::owner_exec, fs::perm_options::add);
    } else {
      WriteFile(place, content);
    }
  }
}

Tree ReadTree(const fs::path& root) {
  Tree tree;
  for (const TreeItem& item : ListTree(root)) {
    const fs::path place = root / item.path;
    const bool executable = (item.mode & fs::perms::owner_exec) != fs::perms::none;
    switch (item.kind) {
      case ItemKind::Folder:
        tree[item.path + "/"];
        break;
      case ItemKind::Link:
        tree[item.path] = kLinkMark + fs::read_symlink(place).string();
        break;
      case ItemKind::File:
        tree[item.path] = (executable ? kExecutableMark : "") + ReadFile(place);
        break;
    }
  }
  return tree;
}

TestFolder::TestFolder() : scratch_(fs::path(testing::TempDir()) / "test") {}

std::string Refusal(const std::function<void()>& step) {
  try {
    step();
  } catch (const SetupError& error) {
    return error.what();
  }
  return "";
}

}  // namespace zephin::make_setup
