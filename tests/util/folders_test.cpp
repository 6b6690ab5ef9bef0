#include "util/folders.h"

#include <gtest/gtest.h>

#include "dialogs/message_modal.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using Expected = std::map<std::string, std::string>;
using ViewConst::CopyFolder;
using ViewConst::DeleteFolderOrApp;
using ViewConst::ForceDirectories;

class Folders : public testing::Test {
 protected:
  Folders() {
    run.BareWindow();
    fs::create_directory(base);
  }
  String At(const std::string& name) const { return Utf8(base / name); }

  StubRun run;
  const fs::path base = run.scratch / "folders";
};

TEST_F(Folders, CopyMergesAndBringsWhatAliasesPointTo) {
  WriteFile(base / "from/a", "new");
  WriteFile(base / "from/sub/b", "b");
  fs::create_symlink("../elsewhere", base / "from/alias");
  fs::create_symlink("nowhere", base / "from/dangling");
  WriteFile(base / "elsewhere/c", "c");
  WriteFile(base / "to/a", "old");
  WriteFile(base / "to/kept", "kept");
  WriteFile(base / "to/sub", "a file in the way");

  // What can't be copied ends neither the copy nor its success. Where a folder can't be made, its
  // path has no separator behind it, and what it holds lands beside it.
  EXPECT_TRUE(CopyFolder(At("from"), At("to")));

  const Expected expected{{"a", "new"},     {"alias", "/"}, {"alias/c", "c"},
                          {"kept", "kept"}, {"subb", "b"},  {"sub", "a file in the way"}};
  EXPECT_EQ(Tree(base / "to"), expected);
  EXPECT_FALSE(CopyFolder("", At("to")));
  EXPECT_FALSE(CopyFolder(At("from"), "to"));
}

TEST_F(Folders, CopyThroughALinkToItsOwnFolderEnds) {
  WriteFile(base / "from/file", "x");
  fs::create_directory_symlink(".", base / "from/loop");
  EXPECT_TRUE(CopyFolder(At("from"), At("to")));
  EXPECT_EQ(ReadFile(base / "to/loop/file"), "x");
}

TEST_F(Folders, CopyOnAFullDiskBringsTheRest) {
  WriteFile(base / "from/large", std::string(5000, 'x'));
  WriteFile(base / "from/small", "s");
  {
    const FullDisk full(4999);
    EXPECT_TRUE(CopyFolder(At("from"), At("to")));
  }
  EXPECT_EQ(Tree(base / "to"), (Expected{{"small", "s"}}));
}

TEST_F(Folders, DeletingSparesWhatAliasesPointToAndOpensWhatIsLocked) {
  WriteFile(base / "kept/file", "k");
  fs::permissions(base / "kept/file", fs::perms(0600));
  WriteFile(base / "gone/locked/file", "x");
  WriteFile(base / "gone/A.app/Contents/x", "x");
  fs::create_symlink("../kept/file", base / "gone/toFile");
  fs::create_directory_symlink("../kept", base / "gone/toFolder");
  fs::create_symlink("nowhere", base / "gone/dangling");
  fs::create_directory_symlink("kept", base / "link");
  fs::permissions(base / "gone/locked", fs::perms::none);
  const PlainUser user(run.scratch.Path());

  for (const char* name : {"gone", "link", "none"}) {
    DeleteFolderOrApp(At(name));
  }

  EXPECT_EQ(Tree(base), (Expected{{"kept", "/"}, {"kept/file", "k"}}));
  EXPECT_EQ(fs::status(base / "kept/file").permissions(), fs::perms(0600));
}

TEST_F(Folders, ForceDirectoriesMakesTheChainUpToWhatIsInTheWay) {
  const std::string tooLong(256, 'n');
  const std::string fileMessage =
      "FILE ALREADY EXISTS.\n\nA file already exists at this path: " + At("x/file").Bytes();
  const std::string volumeMessage =
      "VOLUME NOT FOUND.\n\nThis volume does not exist: " + At("x/" + tooLong).Bytes();
  const struct {
    std::string path;
    Expected made;
    std::string message;
  } rows[] = {
      {"x/a/b/", {{"x/a", "/"}, {"x/a/b", "/"}}, ""},
      {"x", {}, ""},
      {"x/file/a/b", {}, fileMessage},
      {"x/" + tooLong + "/b", {}, volumeMessage},
      {"x//a", {{"x/a", "/"}}, ""},
  };
  for (const auto& row : rows) {
    fs::remove_all(base);
    WriteFile(base / "x/file", "f");
    Expected expected = row.made;
    expected.insert({{"x", "/"}, {"x/file", "f"}});
    ForceDirectories(At(row.path), false);
    EXPECT_EQ(Tree(base), expected) << row.path;
    if (!row.message.empty()) {
      run.desktop.ExpectWindow("Error Message", [&row](Window& window) {
        EXPECT_EQ(dynamic_cast<MessageModal&>(window).MessageText()->Text().Bytes(), row.message);
        ScriptedDesktop::Press(window, "Btn3");
      });
      ForceDirectories(At(row.path), true);
    }
  }
  for (const char* nowhere : {"", "/", "a/b"}) {
    ForceDirectories(nowhere, true);
  }
}

}  // namespace
}  // namespace zephin::test
