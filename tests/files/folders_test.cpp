#include "files/folders.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "util/paths.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

TEST(Folders, DeletionNeverEntersALinkNotEvenOneThatCannotBeRemoved) {
  StubRun run;
  run.BareWindow();
  const Contents kept{{"file", "k"}, {"sub", "/"}, {"sub/file", "k"}};
  for (const auto& [path, content] : kept) {
    if (content != "/") {
      WriteFile(run.scratch / "user/kept" / path, content);
    }
  }
  // The user can't remove the items of these folders, but could empty the folder that is linked to.
  fs::create_directory(run.scratch / "foreign");
  fs::create_directory_symlink("../user/kept", run.scratch / "foreign/link");
  fs::create_directory_symlink("user/kept", run.scratch / "link");
  fs::permissions(run.scratch.Path(), fs::perms(0755));
  const PlainUser user(run.scratch / "user");
  for (const char* path : {"link", "foreign/link", "foreign"}) {
    ViewConst::DeleteFolderOrApp(Utf8(run.scratch / path));
    EXPECT_EQ(Tree(run.scratch / "user/kept"), kept) << path;
  }
}

TEST(Folders, AreDifferentOnTwoDisksWithEqualInodes) {
  struct stat first {};
  struct stat second {};
  ASSERT_EQ(stat("/proc", &first) + stat("/sys", &second), 0);
  ASSERT_EQ(first.st_ino, second.st_ino) << "two roots of the system that share their number";
  const FolderItem folder("/proc");
  EXPECT_FALSE(folder.IsSameAs(FolderItem("/sys")));
  EXPECT_TRUE(folder.IsSameAs(FolderItem("/sys/../proc")));
}

}  // namespace
}  // namespace zephin::test
