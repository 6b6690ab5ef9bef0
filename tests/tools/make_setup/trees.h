#ifndef TESTS_TOOLS_MAKE_SETUP_TREES_H_
#define TESTS_TOOLS_MAKE_SETUP_TREES_H_

#include <filesystem>
#include <functional>
#include <string>

namespace zephin::make_setup {

/// Makes or describes a tree as a line of words, sorted by path: "folder/", "file=content",
/// "program+=content" and "link->target". Names and contents have no spaces. MakeTree creates
/// parent folders as needed; TreeWords lists each folder.
void MakeTree(const std::filesystem::path& root, const std::string& words);
std::string TreeWords(const std::filesystem::path& root);

/// The message of the SetupError that `step` throws; empty if it throws none.
std::string Refusal(const std::function<void()>& step);

}  // namespace zephin::make_setup

#endif  // TESTS_TOOLS_MAKE_SETUP_TREES_H_
