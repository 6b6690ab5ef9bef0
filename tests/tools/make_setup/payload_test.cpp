#include "tools/make_setup/payload.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

TEST(CutIntoPieces, JoinedPiecesAreThePayload) {
  struct Row {
    std::size_t whole;
    std::uint64_t size;
    std::vector<std::string> beside;
  };
  const std::vector<Row> rows{{3, 2, {"Data#End"}},
                              {4, 2, {"Data#End"}},
                              {5, 2, {"Data#2", "Data#End"}},
                              {600000, 300000, {"Data#End"}},
                              {1001,
                               100,
                               {"Data#2", "Data#3", "Data#4", "Data#5", "Data#6", "Data#7",
                                "Data#8", "Data#9", "Data#10", "Data#End"}}};
  for (const Row& row : rows) {
    const test::ScratchFolder folder;
    MakeTree(folder.Path(), "bundle/ beside/");
    Generate({"bundle/Data2", row.whole, 5}, folder.Path());
    const std::string payload = test::ReadFile(folder / "bundle/Data2");
    CutIntoPieces(folder / "bundle/Data2", row.size, folder / "bundle", folder / "beside");
    std::string joined = test::ReadFile(folder / "bundle/Data#1");
    for (const std::string& name : row.beside) {
      joined += test::ReadFile(folder / ("beside/" + name));
    }
    EXPECT_TRUE(joined == payload) << row.whole << " by " << row.size;
    EXPECT_EQ(test::Tree(folder.Path()).size(), row.beside.size() + 3) << row.whole;
  }
}

TEST(CutIntoPieces, SizesThatGiveOnePieceOrTooManyAreRefused) {
  const test::ScratchFolder folder;
  const std::filesystem::path payload = folder / "Data2";
  test::WriteFile(payload, std::string(1001, 'x'));
  for (const std::uint64_t size : {0U, 1U, 1001U, 2000U}) {
    EXPECT_NE(Refusal([&] { CutIntoPieces(payload, size, folder.Path(), folder.Path()); }), "")
        << size;
  }
  EXPECT_EQ(test::Tree(folder.Path()).size(), 1);
}

TEST(Generate, SameValuesGiveTheSameFileAtAFreePlaceOnly) {
  const test::ScratchFolder folder;
  MakeTree(folder.Path(), "outside/kept=kept in/link->../outside");
  for (const auto kind : {GeneratedFile::Kind::Noise, GeneratedFile::Kind::Words}) {
    const std::string prefix = kind == GeneratedFile::Kind::Noise ? "n" : "w";
    Generate({prefix + "/1", 300001, 7, kind}, folder / "in");
    Generate({prefix + "/2", 300001, 7, kind}, folder / "in");
    Generate({prefix + "/3", 300001, 8, kind}, folder / "in");
    auto tree = test::Tree(folder / ("in/" + prefix));
    EXPECT_EQ(tree["1"].size(), 300001);
    EXPECT_TRUE(tree["1"] == tree["2"] && tree["1"] != tree["3"]);
  }
  for (const char* path : {"", ".", "..", "../x", "/x", "n/1", "link/x", "a/../../x"}) {
    EXPECT_NE(Refusal([&] { Generate({path, 1, 1}, folder / "in"); }), "") << path;
  }
  EXPECT_EQ(TreeWords(folder / "outside"), "kept=kept");
}

}  // namespace
}  // namespace zephin::make_setup
