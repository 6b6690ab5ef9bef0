#include "tests/platform/expander/scratch.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <stdexcept>

namespace zephin::expander::test {

namespace fs = std::filesystem;

Scratch::Scratch() {
  // A disk in memory where there is one: thousands of files are made and deleted.
  const fs::path memory = "/dev/shm";
  const fs::path above = fs::is_directory(memory) ? memory : fs::temp_directory_path();
  std::string pattern = (above / "expander-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("no folder for the test: " + pattern);
  }
  root_ = pattern;
}

Scratch::~Scratch() {
  std::error_code ignored;
  for (auto item = fs::recursive_directory_iterator(root_, ignored);
       item != fs::recursive_directory_iterator(); item.increment(ignored)) {
    if (item->is_directory(ignored) && !item->is_symlink(ignored)) {
      fs::permissions(item->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
  }
  fs::remove_all(root_, ignored);
}

std::string Scratch::Write(const std::string& name, const std::string& bytes) const {
  const fs::path path = root_ / name;
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
  return path.string();
}

Listing List(const std::string& folder) {
  constexpr std::size_t kLong = 64;
  Listing listing;
  if (!fs::is_directory(folder)) {
    return listing;
  }
  for (const auto& item : fs::recursive_directory_iterator(folder)) {
    std::string& what = listing[item.path().lexically_relative(folder)];
    if (item.is_symlink()) {
      what = "link " + fs::read_symlink(item.path()).string();
    } else if (item.is_directory()) {
      what = "folder";
    } else {
      const std::string content = ReadFile(item.path());
      what =
          "file " + (content.size() > kLong ? std::to_string(content.size()) + " bytes" : content);
    }
  }
  return listing;
}

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  std::string bytes(file ? static_cast<std::size_t>(file.tellg()) : 0, '\0');
  file.seekg(0);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

std::string Noise(std::size_t size) {
  std::mt19937_64 random(size);
  std::string bytes(size + 8, '\0');
  for (std::size_t i = 0; i < size; i += 8) {
    const std::uint64_t number = random();
    std::memcpy(bytes.data() + i, &number, sizeof number);
  }
  bytes.resize(size);
  return bytes;
}

}  // namespace zephin::expander::test
