#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace zephin::test {
namespace fs = std::filesystem;

ScratchFolder::ScratchFolder(const fs::path& parent) {
  std::string name = parent / "zephin-test-";
  name.append(6, 'X');  // mkdtemp replaces each X.
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no scratch folder: " + name);
  }
  path_ = fs::canonical(name);
}

ScratchFolder::~ScratchFolder() {
  // Restores the rights of folders, so that everything can be deleted.
  std::error_code ignored;
  fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ignored);
  for (auto at = fs::recursive_directory_iterator(path_, ignored); at != fs::end(at);
       at.increment(ignored)) {
    if (at->is_directory(ignored) && !at->is_symlink(ignored)) {
      fs::permissions(at->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
  }
  fs::remove_all(path_, ignored);
}

void WriteFile(const fs::path& path, const std::string& content) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
}

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Noise(std::size_t length) {
  std::mt19937 random(1);
  std::string noise(length, '\0');
  std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>('A' + random() % 26); });
  return noise;
}

Contents Tree(const fs::path& folder) {
  Contents tree;
  for (const auto& item : fs::recursive_directory_iterator(folder)) {
    std::string& content = tree[item.path().lexically_relative(folder).string()];
    if (item.is_symlink()) {
      content = "-> " + fs::read_symlink(item.path()).string();
    } else {
      content = item.is_directory() ? "/" : ReadFile(item.path());
    }
  }
  return tree;
}

}  // namespace zephin::test
