#include "tools/make_setup/zip_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <string>

#include "platform/expander/expander.h"
#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

TEST(ZipFolder, ExpandedArchiveHasTheModesLinksAndTimesOfTheTree) {
  const test::ScratchFolder folder;
  const fs::path tree = folder / "tree";
  MakeTree(tree, "b=bytes a/tool=run a/deep/\u00FC\u65E5= empty/ link->a/nothing");
  fs::permissions(tree / "a/tool", fs::perms{06751});
  fs::permissions(tree / "b", fs::perms{0604});
  const fs::file_time_type time = fs::file_time_type::clock::from_sys(
      std::chrono::sys_seconds(std::chrono::seconds(1600000001)));
  fs::last_write_time(tree / "a/tool", time);
  fs::last_write_time(tree / "empty", time);
  ZipFolder(tree, "Top", folder / "a.zip");
  const expander::Result result = expander::ExpandBeside(folder / "a.zip");
  EXPECT_EQ(result.placedAs + result.Line(), "Top");
  EXPECT_EQ(TreeWords(folder / "Top"), TreeWords(tree));
  EXPECT_EQ(fs::status(folder / "Top/a/tool").permissions(), fs::perms{0751});
  EXPECT_EQ(fs::status(folder / "Top/b").permissions(), fs::perms{0604});
  EXPECT_EQ(fs::last_write_time(folder / "Top/a/tool"), time);
  EXPECT_EQ(fs::last_write_time(folder / "Top/empty"), time);
}

TEST(ZipFolder, ItemThatCannotBePackedIsRefusedAndNoArchiveIsLeft) {
  const test::ScratchFolder folder;
  MakeTree(folder.Path(), "pipe/in/ latin/\xFC= companions/__MACOSX/x= empty/");
  ASSERT_EQ(mkfifo((folder / "pipe/in/it").c_str(), 0600), 0);
  for (const auto& [name, told] : {std::pair{"pipe", "pipe/in/it"},
                                   {"latin", "\xFC"},
                                   {"companions", "__MACOSX"},
                                   {"empty", "empty"},
                                   {"none", "none"}}) {
    const fs::path from = folder / name;
    const std::string refusal = Refusal([&] { ZipFolder(from, "", folder / "a.zip"); });
    EXPECT_NE(refusal.find(told), std::string::npos) << refusal;
    EXPECT_FALSE(fs::exists(folder / "a.zip")) << refusal;
  }
}

}  // namespace
}  // namespace zephin::make_setup
