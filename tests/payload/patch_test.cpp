#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using make_setup::MakeTree;
using make_setup::TreeWords;

/// An installed folder "Tool", and beside it the patch's folder "ToolPatch".
class Patch : public testing::Test {
 protected:
  void Apply(const std::string& patchWords, const std::string& installedWords) {
    fs::remove_all(installed);
    MakeTree(installed, installedWords);
    MakeTree(patch, patchWords);
    Apply();
  }
  void Apply() {
    window.fTargetFolder = Utf8(patch);
    window.ApplyInstallationPatch();
    EXPECT_EQ(window.fTargetFolder.Bytes(), patch);
  }
  void ExpectFailure(const std::string& path) {
    run.desktop.ExpectMessage("Patch Failed: " + (installed / path).string());
  }

  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  const fs::path installed = run.scratch / "Tool";
  const fs::path patch = run.scratch / "ToolPatch";
};

TEST_F(Patch, EachKindOfItemChangesTheInstalledFolder) {
  struct Row {
    std::string patch;
    std::string installed;
    std::string result;
    std::string failure = {};
  };
  const std::vector<Row> rows{
      // Files replace others or are added; missing folders are created for them.
      {"a=2 b=3", "a=1", "a=2 b=3"},
      {"empty/deep/ x/y/c=3", "", "x/ x/y/ x/y/c=3"},
      {"a=2", "a/b=1", "a=2"},
      {"a/b=2", "a=1", "a=1", "a/b"},
      // The marker may be anywhere in a name, in any letter case; its first occurrence counts.
      {"old*Delete*.txt=", "old=1 old.txt=1", "old=1"},
      {"*delete*a= b*DELETE*=", "a=1 b=1", ""},
      {"a*Delete**Delete*=", "a=1 a*Delete*=1", "a=1"},
      {"a*Delete*= gone*Delete*=", "a/", ""},
      {"a*Delete*=", "a/b=1", "a/ a/b=1"},
      {"a=2 a*Delete*=", "a=1", ""},
      // A folder's marker works at the root only; its contents are ignored.
      {"Old*Delete*/new=n", "Old/.x=1 b=1", "b=1"},
      {"Old*Delete*/", "Old=1", "Old=1"},
      {"sub/Old*Delete*/", "sub/Old/ subOld/x=1", "sub/ sub/Old/"},
      {"sub/*Delete*/", "sub/a=1 b=1", "b=1"},
      // Hidden files are ignored, hidden folders are not.
      {".a=2 x/.y=2", ".a=1", ".a=1"},
      {"*Delete*.txt= .a*Delete*=", ".a=1 .txt=1", ".a=1 .txt=1"},
      {".h*Delete*/", ".h/a=1", ""},
      // A link is a file, and is copied as what it points to.
      {"x=2 y->x", "", "x=2 y=2"},
      {"x/a=2 y->x", "", "x/ x/a=2 y/ y/a=2"},
      {"y->nowhere z=2", "y=1", "z=2", "y"},
      {"x/ y*Delete*->x", "y/a=1", "y/ y/a=1"},
      // For a file directly in a bundle only the folder that holds the bundle is created.
      {"d/N.app/f=2", "", "d/", "d/N.app/f"},
      {"N.app/f=2", "N.app/", "N.app/ N.app/f=2"},
      {"N.app/In/f=2 N.app/f=2", "", "N.app/ N.app/In/ N.app/In/f=2 N.app/f=2"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.patch);
    if (!row.failure.empty()) {
      ExpectFailure(row.failure);
    }
    Apply(row.patch, row.installed);
    EXPECT_EQ(TreeWords(installed), row.result);
    EXPECT_FALSE(fs::exists(patch));
  }
}

TEST_F(Patch, MarkerAloneAtTheRootDeletesTheInstalledFolder) {
  Apply("*Delete*/", "a=1");
  EXPECT_FALSE(fs::exists(installed));
}

TEST_F(Patch, MissingPatchFolderIsReported) {
  run.desktop.ExpectMessage("Patch Not Found\n\nPatch folder not created at specified location.");
  Apply();
  EXPECT_EQ(run.desktop.milliseconds, 0);
}

TEST_F(Patch, DeletionOfThePatchFolderIsRetriedEveryTwoSecondsUntilTheUserQuits) {
  for (const bool quits : {false, true}) {
    fs::remove_all(installed);
    MakeTree(installed, "");
    MakeTree(patch, "a=2");
    fs::permissions(run.scratch.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    const std::int64_t start = run.desktop.milliseconds;
    run.desktop.After(5000, [&] {
      EXPECT_TRUE(fs::exists(patch));
      fs::permissions(run.scratch.Path(), fs::perms::owner_all);
      if (quits) {
        Quit(0);
      }
    });
    {
      const PlainUser user(run.scratch.Path());
      EXPECT_EQ(run.Call([this] { Apply(); }), quits ? 0 : -1);
    }
    EXPECT_EQ((run.desktop.milliseconds - start + 500) / 1000, quits ? 5 : 6);
    EXPECT_EQ(TreeWords(installed), "a=2");
    EXPECT_EQ(fs::exists(patch), quits);
  }
}

}  // namespace
}  // namespace zephin::test
