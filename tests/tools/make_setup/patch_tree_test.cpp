#include "tools/make_setup/patch_tree.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <random>
#include <string>
#include <tuple>

#include "tests/support/stub_run.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

TEST(MakePatchTree, ChangeThatThePatchCannotExpressIsRefused) {
  const std::string longName(248, 'n');
  for (const auto& [before, after, item] :
       {std::tuple<std::string, std::string, std::string>{"", "new/", "new"},
        {"", "new/deep/ new/x=", "new/deep"},
        {"sub/gone/x=", "sub/", "sub/gone"},
        {"", "sub/.hidden=", "sub/.hidden"},
        {".hidden=1", ".hidden=2", ".hidden"},
        {".hidden=", "", ".hidden"},
        {"item=", "item/x=", "item"},
        {"item=", "item->x", "item"},
        {"link->a", "link->b", "link"},
        {"", "link->a", "link"},
        {"", "a/New.APP/x=", "a/New.APP/x"},
        {"", "a*delete*b=", "a*delete*b"},
        {longName + "=", "", longName}}) {
    const test::ScratchFolder folder;
    MakeTree(folder / "old", before);
    MakeTree(folder / "new", after);
    const std::string refusal =
        Refusal([&] { MakePatchTree(folder / "old", folder / "new", folder / "patch"); });
    EXPECT_EQ(refusal.substr(0, refusal.find(':')), item) << refusal;
  }
}

/// Maps a path to the rest of its word. The names are few, so that two trees have much in common.
using RandomTree = std::map<std::string, std::string>;

void AddFile(RandomTree& tree, std::mt19937& random) {
  const auto any = [&random](std::initializer_list<const char*> texts) -> std::string {
    return *(texts.begin() + random() % texts.size());
  };
  const std::string folder =
      any({"", "", "", "F/", "F/", "G/", "F/deep/", "F/deep/er/", "X.app/", "X.app/In/", ".H/"});
  // A patch that deletes the last file of a folder leaves the folder.
  for (std::size_t end = 0; (end = folder.find('/', end)) != std::string::npos; ++end) {
    tree[folder.substr(0, end + 1)];
  }
  tree[folder + any({"a", "b", "c", "d.txt"})] = any({"=", "=1", "=22", "+=1"});
}

/// Removes, changes and adds items, mostly in ways that a patch can express.
void Change(RandomTree& tree, std::mt19937& random) {
  for (auto item = tree.begin(); item != tree.end();) {
    const auto chance = random() % 16;
    if (chance < 2 && item->second.starts_with("=")) {
      item->second = chance == 0 ? "=changed" : "+" + item->second;
    }
    item = chance == 2 ? tree.erase(item) : std::next(item);
  }
  if (random() % 4 == 0) {
    std::erase_if(tree, [](const auto& item) { return item.first.starts_with("F/"); });
  }
  AddFile(tree, random);
  AddFile(tree, random);
}

void Make(const fs::path& root, const RandomTree& tree) {
  std::string words;
  for (const auto& [path, rest] : tree) {
    words += path + rest + " ";
  }
  MakeTree(root, words);
}

TEST(MakePatchTree, PatchTurnsTheOldFolderIntoTheNewOne) {
  constexpr int kWanted = 200;
  test::StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  int applied = 0;
  for (unsigned seed = 0; seed < 5000 && applied < kWanted; ++seed) {
    const test::ScratchFolder folder;
    const fs::path installed = folder / "Tool";
    const fs::path patch = folder / "ToolPatch";
    std::mt19937 random(seed);
    RandomTree tree{{"link", "->F/a"}, {"F/.hidden", "=h"}, {"G/empty/", ""}};
    for (int i = 0; i < 9; ++i) {
      AddFile(tree, random);
    }
    Make(installed, tree);
    Change(tree, random);
    Make(folder / "new", tree);
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
