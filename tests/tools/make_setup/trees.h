#ifndef TESTS_TOOLS_MAKE_SETUP_TREES_H_
#define TESTS_TOOLS_MAKE_SETUP_TREES_H_

#include <filesystem>
#include <functional>
#include <string>

namespace zephin::make_setup {

/// A tree in one line of words, sorted by path: "folder/", "file=content", "program+=content" and
/// "link->target". No name or content holds a blank. Folders above an item need no word of their
/// own in what is made, and have one in what is read.
void MakeTree(const std::filesystem::path& root, const std::string& words);
std::string TreeWords(const std::filesystem::path& root);

/// The sentence of the SetupError that `step` throws; empty if it throws none.
std::string Refusal(const std::function<void()>& step);

}  // namespace zephin::make_setup

#endif  // TESTS_TOOLS_MAKE_SETUP_TREES_H_
