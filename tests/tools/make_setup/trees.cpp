#include "tests/tools/make_setup/trees.h"

#include <sstream>

#include "tools/make_setup/files.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {

namespace fs = std::filesystem;

void MakeTree(const fs::path& root, const std::string& words) {
  fs::create_directories(root);
  std::istringstream stream(words);
  for (std::string word; stream >> word;) {
    const std::size_t link = word.find("->");
    const std::size_t sign = word.find('=');
    const bool program = sign != std::string::npos && sign > 0 && word[sign - 1] == '+';
    const fs::path path = root / word.substr(0, std::min(link, program ? sign - 1 : sign));
    fs::create_directories(path.parent_path());
    if (link != std::string::npos) {
      fs::create_symlink(word.substr(link + 2), path);
    } else if (sign != std::string::npos) {
      WriteFile(path, word.substr(sign + 1));
      fs::permissions(path, fs::perms{program ? 0755U : 0644U});
    }
  }
}

std::string TreeWords(const fs::path& root) {
  std::string words;
  for (const TreeItem& item : ListTree(root)) {
    const bool program = (item.mode & fs::perms::owner_exec) != fs::perms::none;
    words += (words.empty() ? "" : " ") + item.path;
    if (item.kind == ItemKind::Folder) {
      words += "/";
    } else if (item.kind == ItemKind::Link) {
      words += "->" + fs::read_symlink(root / item.path).string();
    } else {
      words += (program ? "+=" : "=") + ReadFile(root / item.path);
    }
  }
  return words;
}

std::string Refusal(const std::function<void()>& step) {
  try {
    step();
  } catch (const SetupError& error) {
    return error.what();
  }
  return "";
}

}  // namespace zephin::make_setup
