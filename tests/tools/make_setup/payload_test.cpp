#include "tools/make_setup/payload.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

TEST(CutIntoPieces, JoinedPiecesAreThePayload) {
  for (const auto& [whole, size, count] : {std::tuple{3U, 2U, 2},
                                           {4U, 2U, 2},
                                           {5U, 2U, 3},
                                           {600000U, 300000U, 2},
                                           {1001U, 100U, 11}}) {
    const test::ScratchFolder folder;
    MakeTree(folder.Path(), "bundle/ beside/");
    Generate({"bundle/Data2", whole, 5}, folder.Path());
    const std::string payload = test::ReadFile(folder / "bundle/Data2");
    CutIntoPieces(folder / "bundle/Data2", size, folder / "bundle", folder / "beside");
    std::string joined = test::ReadFile(folder / "bundle/Data#1");
    for (int number = 2; number < count; ++number) {
      joined += test::ReadFile(folder / ("beside/Data#" + std::to_string(number)));
    }
    EXPECT_TRUE(joined + test::ReadFile(folder / "beside/Data#End") == payload) << whole;
    EXPECT_EQ(test::Tree(folder.Path()).size(), count + 2) << whole;
  }
}

TEST(Generate, SameValuesGiveTheSameFile) {
  for (const auto kind : {GeneratedFile::Kind::Noise, GeneratedFile::Kind::Words}) {
    const test::ScratchFolder folder;
    Generate({"1", 300001, 7, kind}, folder.Path());
    Generate({"2", 300001, 7, kind}, folder.Path());
    Generate({"3", 300001, 8, kind}, folder.Path());
    auto tree = test::Tree(folder.Path());
    EXPECT_EQ(tree["1"].size(), 300001);
    EXPECT_TRUE(tree["1"] == tree["2"] && tree["1"] != tree["3"]);
  }
}

}  // namespace
}  // namespace zephin::make_setup
