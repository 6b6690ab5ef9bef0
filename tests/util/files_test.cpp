#include "util/files.h"

#include <gtest/gtest.h>

#include "dialogs/message_modal.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "util/folders.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using Expected = std::map<std::string, std::string>;
using ViewConst::CopyFile;
using ViewConst::CopyFileB;

class Files : public testing::Test {
 protected:
  Files() { run.BareWindow(); }
  /// What stands at the places to copy to.
  void Reset() const {
    fs::remove_all(base);
    WriteFile(base / "file", "old");
    WriteFile(base / "full/old", "");
    fs::create_directory(base / "empty");
    fs::create_symlink("full", base / "alias");
  }
  String At(const std::string& name) const { return Utf8(base / name); }

  StubRun run;
  const fs::path base = run.scratch / "files";
};

TEST_F(Files, CopyMeetsWhatStandsAtTheDestination) {
  WriteFile(run.scratch / "new", "new");
  WriteFile(run.scratch / "folder/new", "");
  // Whether it succeeds, and what then stands there: a file's content or "/" and a folder's names.
  const auto outcome = [this](auto copy, const char* source, const char* place) {
    Reset();
    std::string result = copy(Utf8(run.scratch / source), At(place)) ? "yes " : "no ";
    if (!fs::is_directory(base / place)) {
      return result + ReadFile(base / place);
    }
    for (const auto& [name, content] : Tree(base / place)) {
      result += "/" + name;
    }
    return result;
  };
  // From, to, what the tolerant form does and the strict one.
  const std::vector<std::array<const char*, 4>> rows{
      {"new", "none", "yes new", "yes new"},
      {"new", "file", "yes new", "yes new"},
      {"new", "empty", "yes new", "yes new"},
      {"new", "full", "no /old", "yes new"},
      {"new", "alias", "yes new", "yes new"},
      {"folder", "none", "yes /new", "yes /new"},
      {"folder", "file", "yes /new", "yes /new"},
      {"folder", "alias", "yes /new", "yes /new"},
      // What is in the way of the tolerant form is copied into: both lengths are 0.
      {"folder", "full", "yes /new/old", "yes /new"},
  };
  for (const auto& [source, place, tolerant, strict] : rows) {
    EXPECT_EQ(outcome(CopyFile, source, place), tolerant) << place;
    EXPECT_EQ(outcome(CopyFileB, source, place), strict) << place;
  }
}

TEST_F(Files, RenameReplacesAFileAndSaysYesToAMoveThatFails) {
  // From, to, the answer and what then stands at the place.
  const std::vector<std::array<const char*, 4>> rows{
      {"file", "FILE", "no", "none"},  {"none", "file", "no", "old"},
      {"file", "other", "yes", "old"}, {"file", "empty", "yes", "old"},
      {"alias", "other", "yes", "/"},  {"file", "full", "yes", "/"},
  };
  for (const auto& [from, to, answer, content] : rows) {
    Reset();
    EXPECT_EQ(ViewConst::RenameFile(At(from), At(to)) ? "yes" : "no", std::string(answer)) << to;
    const fs::path place = base / to;
    EXPECT_EQ(!fs::exists(place)        ? "none"
              : fs::is_directory(place) ? "/"
                                        : ReadFile(place),
              content)
        << to;
  }
  EXPECT_FALSE(ViewConst::RenameFile(At("file"), "relative"));
  EXPECT_TRUE(fs::exists(base / "full/old"));
}

TEST_F(Files, CopyFailsWithoutASourceAPlaceOrRoom) {
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

TEST_F(Files, CopyMergesAndBringsWhatAliasesPointTo) {
  WriteFile(base / "from/a", "new");
  WriteFile(base / "from/large", std::string(5000, 'x'));
  fs::create_symlink("../elsewhere", base / "from/alias");
  fs::create_symlink("nowhere", base / "from/dangling");
  WriteFile(base / "elsewhere/c", "c");
  WriteFile(base / "to/a", "old");
  WriteFile(base / "to/kept", "kept");
  // What can't be copied ends neither the copy nor its success.
  const FullDisk full(4999);
  EXPECT_TRUE(ViewConst::CopyFolder(At("from"), At("to")));
  EXPECT_EQ(Tree(base / "to"),
            (Expected{{"a", "new"}, {"alias", "/"}, {"alias/c", "c"}, {"kept", "kept"}}));
  EXPECT_FALSE(ViewConst::CopyFolder(At("from"), "to"));
}

TEST_F(Files, CopyLeavesOutFoldersThatLeadBackToItself) {
  WriteFile(base / "from/sub/a", "a");
  for (const char* link : {"from/top", "from/sub/up", "from/sub/again"}) {
    fs::create_directory_symlink("..", base / link);
  }
  fs::create_directory_symlink("../../from/sub", base / "from/sub/self");
  EXPECT_TRUE(ViewConst::CopyFolder(At("from"), At("from/sub/to")));
  EXPECT_EQ(Tree(base / "from/sub/to"), (Expected{{"sub", "/"}, {"sub/a", "a"}, {"top", "/"}}));
}

TEST_F(Files, DeletingSparesWhatAliasesPointToAndOpensWhatIsLocked) {
  WriteFile(base / "kept/file", "k");
  fs::permissions(base / "kept/file", fs::perms(0600));
  WriteFile(base / "gone/locked/file", "x");
  fs::permissions(base / "gone/locked", fs::perms::none);
  fs::create_symlink("../kept/file", base / "gone/toFile");
  fs::create_directory_symlink("../kept", base / "gone/toFolder");
  fs::create_symlink("nowhere", base / "gone/dangling");
  fs::create_directory_symlink("kept", base / "link");
  const PlainUser user(run.scratch.Path());
  ViewConst::DeleteFolderOrApp(At("gone"));
  ViewConst::DeleteFolderOrApp(At("link"));
  EXPECT_EQ(Tree(base), (Expected{{"kept", "/"}, {"kept/file", "k"}}));
  EXPECT_EQ(fs::status(base / "kept/file").permissions(), fs::perms(0600));
}

TEST_F(Files, ChainOfFoldersIsMadeUpToWhatIsInTheWay) {
  WriteFile(base / "file", "f");
  const std::string tooLong(256, 'n');
  const std::vector<std::pair<std::string, std::string>> rows{
      {"file/x", "FILE ALREADY EXISTS.\n\nA file already exists at this path: "},
      {tooLong + "/x", "VOLUME NOT FOUND.\n\nThis volume does not exist: "},
  };
  for (const auto& [path, message] : rows) {
    ViewConst::ForceDirectories(At(path), false);
    const std::string text = message + At(path.substr(0, path.find('/'))).Bytes();
    run.desktop.ExpectWindow("Error Message", [&text](Window& window) {
      EXPECT_EQ(dynamic_cast<MessageModal&>(window).MessageText()->Text().Bytes(), text);
      ScriptedDesktop::Press(window, "Btn3");
    });
    ViewConst::ForceDirectories(At(path), true);
  }
  ViewConst::ForceDirectories(At("a/b/"), true);
  ViewConst::ForceDirectories("relative/path", true);
  EXPECT_EQ(Tree(base), (Expected{{"a", "/"}, {"a/b", "/"}, {"file", "f"}}));
  EXPECT_TRUE(ViewConst::DirectoryExists(At("a/")));
  EXPECT_FALSE(ViewConst::DirectoryExists("/"));
}

}  // namespace
}  // namespace zephin::test
