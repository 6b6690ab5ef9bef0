#include "files/files.h"

#include <gtest/gtest.h>

#include "dialogs/message_modal.h"
#include "files/folders.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "util/paths.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using namespace ViewConst;
using Expected = std::map<std::string, std::string>;

class Files : public testing::Test {
 protected:
  Files() { run.BareWindow(); }
  /// Creates the sources of the copies and the items at their destinations.
  void Reset() const {
    fs::remove_all(base);
    WriteFile(base / "new", "new");
    WriteFile(base / "folder/new", "");
    WriteFile(base / "file", "old");
    WriteFile(base / "full/old", "");
    fs::create_directory(base / "empty");
    fs::create_symlink("full", base / "alias");
  }
  String At(const std::string& name) const { return Utf8(base / name); }
  /// The result of a call and the item at its destination afterwards: the content of a file, or "/"
  /// before each name in a folder.
  std::string Outcome(bool answer, const std::string& place) const {
    std::string outcome = answer ? "yes " : "no ";
    if (!fs::is_directory(base / place)) {
      return outcome + (fs::exists(base / place) ? ReadFile(base / place) : "none");
    }
    for (const auto& [name, content] : Tree(base / place)) {
      outcome += "/" + name;
    }
    return outcome;
  }

  StubRun run;
  const fs::path base = run.scratch / "files";
};

TEST_F(Files, CopyOntoAnExistingItem) {
  // Source, destination, outcome of the tolerant copy and of the strict one.
  const std::vector<std::array<const char*, 4>> rows{
      {"new", "none", "yes new", "yes new"},
      {"new", "file", "yes new", "yes new"},
      {"new", "empty", "yes new", "yes new"},
      {"new", "full", "no /old", "yes new"},
      {"new", "alias", "yes new", "yes new"},
      {"folder", "none", "yes /new", "yes /new"},
      {"folder", "file", "yes /new", "yes /new"},
      {"folder", "alias", "yes /new", "yes /new"},
      // The tolerant copy continues into an existing folder, since both lengths are 0.
      {"folder", "full", "yes /new/old", "yes /new"},
  };
  for (const auto& [source, place, tolerant, strict] : rows) {
    Reset();
    EXPECT_EQ(Outcome(CopyFile(At(source), At(place)), place), tolerant) << place;
    Reset();
    EXPECT_EQ(Outcome(CopyFileB(At(source), At(place)), place), strict) << place;
  }
}

TEST_F(Files, RenameReplacesAFileAndReturnsTrueForAFailedMove) {
  const std::vector<std::array<const char*, 3>> rows{
      {"file", "FILE", "no none"},  {"none", "file", "no old"},     {"file", "other", "yes old"},
      {"file", "empty", "yes old"}, {"alias", "other", "yes /old"}, {"file", "full", "yes /old"},
  };
  for (const auto& [from, to, expected] : rows) {
    Reset();
    EXPECT_EQ(Outcome(RenameFile(At(from), At(to)), to), expected) << to;
  }
  EXPECT_FALSE(RenameFile(At("file"), "relative"));
}

TEST_F(Files, CopyFailsWithoutSourceFolderOrSpace) {
  Reset();
  const auto before = Tree(base);
  for (const auto copy : {CopyFile, CopyFileB}) {
    EXPECT_FALSE(copy(At("none"), At("copy")));
    EXPECT_FALSE(copy(At("file"), At("none/copy")));
    EXPECT_FALSE(copy(At("file"), "relative"));
    const FullDisk full(2);
    EXPECT_FALSE(copy(At("file"), At("copy")));
  }
  EXPECT_EQ(Tree(base), before);
}

TEST_F(Files, OnlyTheTolerantCopyIgnoresAnErrorIfLengthsAreEqual) {
  WriteFile(base / "new", "new");
  WriteFile(base / "locked/file", "old");
  fs::permissions(base / "locked", fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  EXPECT_TRUE(CopyFile(At("new"), At("locked/file")));
  EXPECT_FALSE(CopyFileB(At("new"), At("locked/file")));
  EXPECT_EQ(ReadFile(base / "locked/file"), "old");
}

TEST_F(Files, CopyMergesFoldersAndCopiesTargetsOfAliases) {
  WriteFile(base / "from/a", "new");
  WriteFile(base / "from/large", std::string(5000, 'x'));
  fs::create_symlink("../elsewhere", base / "from/alias");
  fs::create_symlink("nowhere", base / "from/dangling");
  WriteFile(base / "from/sub/d", "d");
  fs::create_symlink("sub", base / "from/z");
  WriteFile(base / "elsewhere/c", "c");
  WriteFile(base / "to/a", "old");
  WriteFile(base / "to/kept", "kept");
  // A file that can't be copied is skipped, and the copy still succeeds.
  const FullDisk full(4999);
  EXPECT_TRUE(CopyFolder(At("from"), At("to")));
  EXPECT_EQ(Tree(base / "to"), (Expected{{"a", "new"},
                                         {"alias", "/"},
                                         {"alias/c", "c"},
                                         {"kept", "kept"},
                                         {"sub", "/"},
                                         {"sub/d", "d"},
                                         {"z", "/"},
                                         {"z/d", "d"}}));
  EXPECT_FALSE(CopyFolder(At("from"), "to"));
}

TEST_F(Files, CopyLeavesOutFoldersThatLeadBackToItself) {
  WriteFile(base / "from/sub/a", "a");
  for (const char* link : {"from/top", "from/sub/up", "from/sub/again"}) {
    fs::create_directory_symlink("..", base / link);
  }
  fs::create_directory_symlink("../../from/sub", base / "from/sub/self");
  EXPECT_TRUE(CopyFolder(At("from"), At("from/sub/to")));
  EXPECT_EQ(Tree(base / "from/sub/to"), (Expected{{"sub", "/"}, {"sub/a", "a"}, {"top", "/"}}));
}

TEST_F(Files, DeletionKeepsTargetsOfAliasesAndOpensLockedFolders) {
  WriteFile(base / "kept/file", "k");
  fs::permissions(base / "kept/file", fs::perms(0600));
  WriteFile(base / "gone/locked/file", "x");
  fs::permissions(base / "gone/locked", fs::perms::none);
  fs::create_symlink("../kept/file", base / "gone/toFile");
  fs::create_directory_symlink("../kept", base / "gone/toFolder");
  fs::create_symlink("nowhere", base / "gone/dangling");
  fs::create_directory_symlink("kept", base / "link");
  const PlainUser user(run.scratch.Path());
  DeleteFolderOrApp(At("gone"));
  DeleteFolderOrApp(At("link"));
  EXPECT_EQ(Tree(base), (Expected{{"kept", "/"}, {"kept/file", "k"}}));
  EXPECT_EQ(fs::status(base / "kept/file").permissions(), fs::perms(0600));
}

TEST_F(Files, ForceDirectoriesCreatesAllMissingFoldersOrReports) {
  WriteFile(base / "file", "f");
  const std::vector<std::pair<std::string, std::string>> rows{
      {"file", "FILE ALREADY EXISTS.\n\nA file already exists at this path: "},
      {std::string(256, 'n'), "VOLUME NOT FOUND.\n\nThis volume does not exist: "},
  };
  for (const auto& [name, message] : rows) {
    ForceDirectories(At(name + "/x"), false);
    run.desktop.ExpectWindow("Error Message", [text = message + At(name).Bytes()](Window& window) {
      EXPECT_EQ(dynamic_cast<MessageModal&>(window).MessageText()->Text().Bytes(), text);
      ScriptedDesktop::Press(window, "Btn3");
    });
    ForceDirectories(At(name + "/x"), true);
  }
  ForceDirectories(At("a/b/"), true);
  ForceDirectories("relative/path", true);
  EXPECT_EQ(Tree(base), (Expected{{"a", "/"}, {"a/b", "/"}, {"file", "f"}}));
  EXPECT_TRUE(DirectoryExists(At("a/")));
  EXPECT_FALSE(DirectoryExists("/") || DirectoryExists(At("file")) || DirectoryExists(At("none")));
}

TEST(AccessRights, AreSetOnTheItemOnlyWhateverItsName) {
  StubRun run;
  run.BareWindow();
  const std::string name = "it's \"$(touch evil)\"\n`id`;&\xE9";
  const fs::path folder = run.scratch / name;
  const fs::path file = folder / name;
  const Ref<FolderItem> alias = GlobalsVk::MyGetFolderItem(Utf8(folder / "alias"));
  WriteFile(file, "x");
  fs::create_symlink(name, folder / "alias");
  fs::permissions(file, fs::perms(0400));
  fs::permissions(folder, fs::perms(0700));
  ViewConst::AllUsersFullAccess(Utf8(folder));
  EXPECT_EQ(fs::status(folder).permissions(), fs::perms(0777));
  // In a tree that is being deleted, rights are not set on the target of a link.
  ViewConst::AllUsersFullAccessInTree(alias);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0400));
  ViewConst::AllUsersFullAccess(Utf8(file));
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0666));
  ViewConst::AllUsersFullAccessOnMac(alias);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0777));
  EXPECT_FALSE(fs::exists("evil"));
}

}  // namespace
}  // namespace zephin::test
