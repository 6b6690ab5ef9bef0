#include "tools/make_setup/patch_tree.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

TEST(MakePatchTree, WhatAPatchCannotSayIsRefusedByName) {
  struct Row {
    std::string before;
    std::string after;
    std::string item;
  };
  const std::string longName(248, 'n');
  const std::vector<Row> rows{{"", "new/", "new"},
                              {"", "new/deep/ new/x=", "new/deep"},
                              {"sub/gone/x=", "sub/", "sub/gone"},
                              {"sub/gone/", "sub/", "sub/gone"},
                              {"", "sub/.hidden=", "sub/.hidden"},
                              {".hidden=1", ".hidden=2", ".hidden"},
                              {".hidden=", "", ".hidden"},
                              {"item=", "item/x=", "item"},
                              {"item/x=", "item=", "item"},
                              {"item=", "item->x", "item"},
                              {"link->a", "link->b", "link"},
                              {"", "link->a", "link"},
                              {"", "a/New.APP/x=", "a/New.APP/x"},
                              {"", "a*delete*b=", "a*delete*b"},
                              {"*Delete*/x=", "", "*Delete*"},
                              {longName + "=", "", longName}};
  for (const Row& row : rows) {
    const test::ScratchFolder folder;
    MakeTree(folder / "old", row.before);
    MakeTree(folder / "new", row.after);
    const std::string refusal =
        Refusal([&] { MakePatchTree(folder / "old", folder / "new", folder / "patch"); });
    EXPECT_EQ(refusal.substr(0, refusal.find(':')), row.item) << refusal;
  }
}

}  // namespace
}  // namespace zephin::make_setup
