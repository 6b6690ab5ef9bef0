#include "tools/make_setup/payload.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/scratch_folder.h"

namespace zephin::make_setup {
namespace {

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
