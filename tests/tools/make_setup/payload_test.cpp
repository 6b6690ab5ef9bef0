#include "tools/make_setup/payload.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

TEST(CutIntoPieces, JoinedPiecesAreThePayload) {
  struct Row {
    std::size_t whole;
    std::uint64_t size;
    std::vector<std::string> beside;
  };
  const std::vector<Row> rows{
      {3, 2, {"Data#End"}},
      {4, 2, {"Data#End"}},
      {5, 2, {"Data#2", "Data#End"}},
      {600000, 300000, {"Data#End"}},
      {11,
       1,
       {"Data#2", "Data#3", "Data#4", "Data#5", "Data#6", "Data#7", "Data#8", "Data#9", "Data#10",
        "Data#End"}},
  };
  for (const Row& row : rows) {
    const TestFolder folder;
    WriteTree(folder.Path(), {{"resources/", ""}, {"beside/", ""}});
    Generate({"resources/Data2", row.whole, 5, GeneratedFile::Kind::Noise}, folder.Path());
    const std::string payload = ReadFile(folder / "resources/Data2");
    CutIntoPieces(folder / "resources/Data2", row.size, folder / "resources", folder / "beside");
    Tree beside = ReadTree(folder / "beside");
    const Tree inBundle = ReadTree(folder / "resources");
    EXPECT_EQ(beside.size(), row.beside.size());
    std::string joined = inBundle.at("Data#1");
    for (const std::string& name : row.beside) {
      joined += beside[name];
    }
    EXPECT_TRUE(joined == payload && inBundle.size() == 1) << row.whole << " by " << row.size;
  }
}

TEST(CutIntoPieces, SizesThatGiveOnePieceOrTooManyAreRefused) {
  const TestFolder folder;
  WriteFile(folder / "Data2", std::string(1001, 'x'));
  for (const std::uint64_t size : {0U, 1U, 1001U, 2000U}) {
    EXPECT_NE(Refusal([&] {
                CutIntoPieces(folder / "Data2", size, folder.Path(), folder.Path());
              }).find("1001 bytes"),
              std::string::npos)
        << size;
  }
  EXPECT_EQ(ReadTree(folder.Path()).size(), 1);
}

TEST(IsPieceName, OnlyWhatTheStubLooksFor) {
  for (const char* name : {"Data#2", "Data#10", "Data#End"}) {
    EXPECT_TRUE(IsPieceName(name)) << name;
  }
  for (const char* name : {"Data#", "Data#2a", "Data2", "Data#End2", "MyData#2"}) {
    EXPECT_FALSE(IsPieceName(name)) << name;
  }
}

TEST(Generate, SameValuesGiveTheSameFileAndAFreePlaceOnlyIsFilled) {
  const TestFolder folder;
  WriteTree(folder.Path(), {{"outside/kept", "kept"}, {"in/link", "-> ../outside"}});
  for (const auto kind : {GeneratedFile::Kind::Noise, GeneratedFile::Kind::Words}) {
    const std::string prefix = kind == GeneratedFile::Kind::Noise ? "n" : "w";
    Generate({prefix + "/1", 300001, 7, kind}, folder / "in");
    Generate({prefix + "/2", 300001, 7, kind}, folder / "in");
    Generate({prefix + "/3", 300001, 8, kind}, folder / "in");
    const Tree tree = ReadTree(folder / ("in/" + prefix));
    EXPECT_EQ(tree.at("1").size(), 300001);
    EXPECT_TRUE(tree.at("1") == tree.at("2") && tree.at("1") != tree.at("3"));
  }
  for (const char* path : {"", ".", "..", "../x", "/x", "n/1", "link/x", "a/../../x"}) {
    EXPECT_NE(Refusal([&] { Generate({path, 1, 1}, folder / "in"); }), "") << path;
  }
  EXPECT_EQ(ReadTree(folder / "outside"), (Tree{{"kept", "kept"}}));
}

}  // namespace
}  // namespace zephin::make_setup
