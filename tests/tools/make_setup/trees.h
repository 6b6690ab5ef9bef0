#ifndef TESTS_TOOLS_MAKE_SETUP_TREES_H_
#define TESTS_TOOLS_MAKE_SETUP_TREES_H_

#include <filesystem>
#include <functional>
#include <map>
#include <string>

#include "tools/make_setup/files.h"

namespace zephin::make_setup {

/// What a folder holds: by path "" for a folder (whose path ends in "/"), "-> target" for a link,
/// and else a file's content, with "+x " before it for an executable one.
using Tree = std::map<std::string, std::string>;

void WriteTree(const std::filesystem::path& root, const Tree& tree);
Tree ReadTree(const std::filesystem::path& root);

/// A folder for one test, which goes with it.
class TestFolder {
 public:
  TestFolder();
  [[nodiscard]] const std::filesystem::path& Path() const { return scratch_.Path(); }
  std::filesystem::path operator/(const std::string& name) const { return Path() / name; }

 private:
  ScratchFolder scratch_;
};

/// The sentence of the SetupError that `step` throws; empty if it throws none.
std::string Refusal(const std::function<void()>& step);

}  // namespace zephin::make_setup

#endif  // TESTS_TOOLS_MAKE_SETUP_TREES_H_
