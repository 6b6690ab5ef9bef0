#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <random>
#include <string>

#include "tests/support/stub_run.h"
#include "tests/tools/make_setup/trees.h"
#include "tools/make_setup/patch_tree.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

/// A tree of a few names each of which comes often, so that two of them have much in common.
class RandomTree {
 public:
  explicit RandomTree(std::mt19937& random) : random_(random) {
    for (int i = 0; i < 9; ++i) {
      AddFile();
    }
    items_["link"] = "->F/a";
    items_["F/.hidden"] = "=h";
    items_["G/empty/"];
  }

  /// Takes items away, changes some and adds some, mostly such as a patch can say.
  void Change() {
    for (auto item = items_.begin(); item != items_.end();) {
      const auto chance = random_() % 16;
      if (chance < 2 && item->second.starts_with("=")) {
        item->second = chance == 0 ? "=changed" : "+" + item->second;
      }
      item = chance == 2 ? items_.erase(item) : std::next(item);
    }
    if (random_() % 4 == 0) {
      std::erase_if(items_, [](const auto& item) { return item.first.starts_with("F/"); });
    }
    AddFile();
    AddFile();
  }

  [[nodiscard]] std::string Words() const {
    std::string words;
    for (const auto& [path, rest] : items_) {
      words += path + rest + " ";
    }
    return words;
  }

 private:
  std::string Any(std::initializer_list<const char*> texts) {
    return *(texts.begin() + random_() % texts.size());
  }

  void AddFile() {
    const std::string folder =
        Any({"", "", "", "F/", "F/", "G/", "F/deep/", "F/deep/er/", "X.app/", "X.app/In/", ".H/"});
    // What a patch leaves of a folder whose last file goes.
    for (std::size_t end = 0; (end = folder.find('/', end)) != std::string::npos; ++end) {
      items_[folder.substr(0, end + 1)];
    }
    items_[folder + Any({"a", "b", "c", "d.txt"})] = Any({"=", "=1", "=22", "+=1"});
  }

  std::mt19937& random_;
  /// Path to the rest of its word.
  std::map<std::string, std::string> items_;
};

TEST(PatchProperty, PatchTurnsTheOldFolderIntoTheNewOne) {
  constexpr int kWanted = 200;
  test::StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  int applied = 0;
  for (unsigned seed = 0; seed < 5000 && applied < kWanted; ++seed) {
    const test::ScratchFolder folder;
    std::mt19937 random(seed);
    RandomTree tree(random);
    const fs::path installed = folder / "Tool";
    const fs::path patch = folder / "ToolPatch";
    MakeTree(installed, tree.Words());
    tree.Change();
    MakeTree(folder / "new", tree.Words());
    if (!Refusal([&] { MakePatchTree(installed, folder / "new", patch); }).empty()) {
      continue;
    }
    window.fTargetFolder = Utf8(patch.string());
    EXPECT_EQ(run.Call([&] { window.ApplyInstallationPatch(); }), -1);
    EXPECT_EQ(TreeWords(installed), TreeWords(folder / "new")) << seed;
    EXPECT_FALSE(fs::exists(patch)) << seed;
    ++applied;
  }
  EXPECT_EQ(applied, kWanted);
}

}  // namespace
}  // namespace zephin::make_setup
