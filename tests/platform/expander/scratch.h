// A folder of a test's own, and looks at what stands in it.
#ifndef TESTS_PLATFORM_EXPANDER_SCRATCH_H_
#define TESTS_PLATFORM_EXPANDER_SCRATCH_H_

#include <filesystem>
#include <map>
#include <string>

namespace zephin::expander::test {

// Made at the start, removed with all it holds at the end, whatever modes stand in it.
class Scratch {
 public:
  Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch();

  // The path of a name in it.
  std::string Path(const std::string& name) const { return (root_ / name).string(); }
  // Writes a file, with the folders above it, and gives its path.
  std::string Write(const std::string& name, const std::string& bytes) const;

 private:
  std::filesystem::path root_;
};

// Everything below a folder: path -> "file CONTENT" (long contents by their length), "link TARGET"
// or "folder". Empty for a folder that isn't there.
using Listing = std::map<std::string, std::string>;
Listing List(const std::string& folder);

std::string ReadFile(const std::string& path);

// `size` bytes that don't repeat within the reach of a compressor, the same every time.
std::string Noise(std::size_t size);

}  // namespace zephin::expander::test

#endif  // TESTS_PLATFORM_EXPANDER_SCRATCH_H_
