#include "util/files.h"

#include <gtest/gtest.h>

#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "util/my_get_folder_item.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using Expected = std::map<std::string, std::string>;
using ViewConst::CopyFile;
using ViewConst::CopyFileB;

class Files : public testing::Test {
 protected:
  Files() {
    run.BareWindow();
    fs::create_directory(base);
  }
  String At(const std::string& name) const { return Utf8(base / name); }

  StubRun run;
  const fs::path base = run.scratch / "files";
};

TEST_F(Files, ExistenceIsAskedOfFoldersFilesAndLinks) {
  WriteFile(base / "file", "x");
  fs::create_symlink("nowhere", base / "dangling");
  fs::create_directory_symlink(".", base / "alias");
  const struct {
    String path;
    bool file;
    bool folder;
  } rows[] = {
      {At(""), true, true},        {Utf8(base), true, true},      {At("file"), true, false},
      {At("none"), false, false},  {At("dangling"), true, false}, {At("alias"), true, true},
      {"/", true, false},          {"files", false, false},       {"", false, false},
      {At("alias//"), true, true}, {At("file/"), true, false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ViewConst::FileExists(row.path), row.file) << row.path.Bytes();
    EXPECT_EQ(ViewConst::DirectoryExists(row.path), row.folder) << row.path.Bytes();
  }
}

TEST_F(Files, CopyMeetsWhatStandsAtTheDestination) {
  const auto copyOntoAll = [this](auto copy, const char* source) {
    WriteFile(base / "file", "new");
    WriteFile(base / "folder/new", "n");
    WriteFile(base / "onFile", "old");
    fs::create_directory(base / "onEmpty");
    WriteFile(base / "onFull/old", "o");
    fs::create_symlink("kept", base / "onLink");
    WriteFile(base / "kept", "kept");
    std::string results;
    for (const char* place : {"onNothing", "onFile", "onEmpty", "onFull", "onLink"}) {
      results += copy(At(source), At(place)) ? "1" : "0";
    }
    Expected tree = Tree(base);
    for (const char* same : {"file", "folder", "folder/new"}) {
      EXPECT_EQ(tree.erase(same), 1U);
    }
    fs::remove_all(base);
    return std::pair(results, tree);
  };
  const Expected filesButFull{
      {"onNothing", "new"}, {"onFile", "new"}, {"onEmpty", "new"},
      {"onLink", "new"},    {"kept", "kept"},
  };
  Expected tolerant = filesButFull;
  tolerant.insert({{"onFull", "/"}, {"onFull/old", "o"}});
  EXPECT_EQ(copyOntoAll(CopyFile, "file"), std::pair(std::string("11101"), tolerant));
  Expected strict = filesButFull;
  strict.insert({"onFull", "new"});
  EXPECT_EQ(copyOntoAll(CopyFileB, "file"), std::pair(std::string("11111"), strict));

  Expected folders{{"kept", "kept"}};
  for (const char* place : {"onNothing", "onFile", "onEmpty", "onFull", "onLink"}) {
    folders.insert({{place, "/"}, {std::string(place) + "/new", "n"}});
  }
  EXPECT_EQ(copyOntoAll(CopyFileB, "folder"), std::pair(std::string("11111"), folders));
  // What is in the way of the tolerant form stays and is copied into: both lengths are 0.
  folders.insert({"onFull/old", "o"});
  EXPECT_EQ(copyOntoAll(CopyFile, "folder"), std::pair(std::string("11111"), folders));
}

TEST_F(Files, CopyOfABundleBringsItsContentsAndRights) {
  WriteFile(base / "A.app/Contents/MacOS/run", "#!");
  fs::permissions(base / "A.app/Contents/MacOS/run", fs::perms(0751));
  fs::create_symlink("run", base / "A.app/Contents/MacOS/alias");

  EXPECT_TRUE(CopyFile(At("A.app"), At("B.app")));

  const Expected expected{{"Contents", "/"},
                          {"Contents/MacOS", "/"},
                          {"Contents/MacOS/alias", "#!"},
                          {"Contents/MacOS/run", "#!"}};
  EXPECT_EQ(Tree(base / "B.app"), expected);
  EXPECT_EQ(fs::status(base / "B.app/Contents/MacOS/run").permissions(), fs::perms(0751));
}

TEST_F(Files, CopyFailsWithoutASourceAPlaceOrRoom) {
  WriteFile(base / "file", std::string(10000, 'x'));
  for (const auto copy : {CopyFile, CopyFileB}) {
    EXPECT_FALSE(copy(At("none"), At("copy")));
    EXPECT_FALSE(copy(At("file"), At("none/copy")));
    EXPECT_FALSE(copy("", At("copy")));
    EXPECT_FALSE(copy(At("file"), "relative"));
    const FullDisk full(9999);
    EXPECT_FALSE(copy(At("file"), At("copy")));
  }
  EXPECT_EQ(Tree(base), (Expected{{"file", std::string(10000, 'x')}}));
}

TEST_F(Files, RenameMovesOverWhatStandsThereButNotByCaseAlone) {
  const struct {
    const char* from;
    const char* to;
    bool done;
    Expected left;
  } rows[] = {
      {"A", "b", true, {{"b", "a"}, {"Full", "/"}, {"Full/x", ""}}},
      {"A", "c", true, {{"b", "b"}, {"c", "a"}, {"Full", "/"}, {"Full/x", ""}}},
      {"A", "a", false, {{"A", "a"}, {"b", "b"}, {"Full", "/"}, {"Full/x", ""}}},
      {"none", "b", false, {{"A", "a"}, {"b", "b"}, {"Full", "/"}, {"Full/x", ""}}},
      // Says only that the move was tried.
      {"A", "Full", true, {{"A", "a"}, {"b", "b"}, {"Full", "/"}, {"Full/x", ""}}},
  };
  for (const auto& row : rows) {
    fs::remove_all(base);
    WriteFile(base / "A", "a");
    WriteFile(base / "b", "b");
    WriteFile(base / "Full/x", "");
    EXPECT_EQ(ViewConst::RenameFile(At(row.from), At(row.to)), row.done) << row.to;
    EXPECT_EQ(Tree(base), row.left) << row.from << " " << row.to;
  }
}

TEST_F(Files, DeleteFileLeavesFullFoldersAndTargetsOfLinks) {
  WriteFile(base / "Full/x", "");
  WriteFile(base / "file", "");
  fs::create_symlink("Full/x", base / "link");
  fs::create_directory(base / "empty");
  for (const char* name : {"Full", "file", "link", "empty", "none"}) {
    ViewConst::DeleteFile(At(name));
  }
  EXPECT_EQ(Tree(base), (Expected{{"Full", "/"}, {"Full/x", ""}}));
}

}  // namespace
}  // namespace zephin::test
