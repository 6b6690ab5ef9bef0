#include "tools/make_setup/patch_tree.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

TEST(MakePatchTree, HoldsWhatChangesAndMarksWhatGoes) {
  const TestFolder folder;
  WriteTree(folder / "old", {{"same", "same"},
                             {"changed", "before"},
                             {"same length", "1"},
                             {"becomes a program", "x"},
                             {"gone", "x"},
                             {"gone link", "-> same"},
                             {"sub/gone", "x"},
                             {"emptied/gone", "x"},
                             {"Gone/deep/.hidden", "x"},
                             {".Gone/x", "x"},
                             {"stays empty/", ""},
                             {"link", "-> same"},
                             {".hidden", "same"},
                             {"Old.app/Contents/x", "1"}});
  WriteTree(folder / "new", {{"same", "same"},
                             {"changed", "after it"},
                             {"same length", "2"},
                             {"becomes a program", "+x x"},
                             {"sub/", ""},
                             {"emptied/", ""},
                             {"stays empty/", ""},
                             {"link", "-> same"},
                             {".hidden", "same"},
                             {".config/new", "n"},
                             {"New/deep/file", "+x n"},
                             {"New.app/Contents/x", "1"},
                             {"Old.app/Contents/x", "2"},
                             {"Old.app/direct", "d"}});
  MakePatchTree(folder / "old", folder / "new", folder / "patch");
  EXPECT_EQ(ReadTree(folder / "patch"), (Tree{{"changed", "after it"},
                                              {"same length", "2"},
                                              {"becomes a program", "+x x"},
                                              {"gone*Delete*", ""},
                                              {"gone link*Delete*", ""},
                                              {"sub/", ""},
                                              {"sub/gone*Delete*", ""},
                                              {"emptied/", ""},
                                              {"emptied/gone*Delete*", ""},
                                              {"Gone*Delete*/", ""},
                                              {".Gone*Delete*/", ""},
                                              {".config/", ""},
                                              {".config/new", "n"},
                                              {"New/", ""},
                                              {"New/deep/", ""},
                                              {"New/deep/file", "+x n"},
                                              {"New.app/", ""},
                                              {"New.app/Contents/", ""},
                                              {"New.app/Contents/x", "1"},
                                              {"Old.app/", ""},
                                              {"Old.app/Contents/", ""},
                                              {"Old.app/Contents/x", "2"},
                                              {"Old.app/direct", "d"}}));
}

TEST(MakePatchTree, WhatAPatchCannotSayIsRefusedByName) {
  struct Row {
    Tree before;
    Tree after;
    std::string item;
  };
  const std::string longName(248, 'n');
  const std::vector<Row> rows{
      {{}, {{"new/", ""}}, "new: "},
      {{}, {{"new/deep/", ""}, {"new/x", ""}}, "new/deep: "},
      {{{"sub/gone/x", ""}}, {{"sub/", ""}}, "sub/gone: "},
      {{{"sub/gone/", ""}}, {{"sub/", ""}}, "sub/gone: "},
      {{}, {{"sub/.hidden", ""}}, "sub/.hidden: "},
      {{{".hidden", "1"}}, {{".hidden", "2"}}, ".hidden: "},
      {{{".hidden", ""}}, {}, ".hidden: "},
      {{{"item", ""}}, {{"item/x", ""}}, "item: "},
      {{{"item/x", ""}}, {{"item", ""}}, "item: "},
      {{{"item", ""}}, {{"item", "-> x"}}, "item: "},
      {{{"link", "-> a"}}, {{"link", "-> b"}}, "link: "},
      {{}, {{"link", "-> a"}}, "link: "},
      {{}, {{"a/New.APP/x", ""}}, "a/New.APP/x: "},
      {{}, {{"a*delete*b", ""}}, "a*delete*b: "},
      {{{"*Delete*/x", ""}}, {}, "*Delete*: "},
      {{{longName, ""}}, {}, longName + ": "},
  };
  for (const Row& row : rows) {
    const TestFolder folder;
    WriteTree(folder / "old", row.before);
    WriteTree(folder / "new", row.after);
    const std::string refusal =
        Refusal([&] { MakePatchTree(folder / "old", folder / "new", folder / "patch"); });
    EXPECT_EQ(refusal.substr(0, row.item.size()), row.item) << refusal;
  }
}

}  // namespace
}  // namespace zephin::make_setup
