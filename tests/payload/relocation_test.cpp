#include <gtest/gtest.h>

#include "tests/support/limits.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

class Relocation : public testing::Test {
 protected:
  Relocation() {
    WriteFile(run.Resources() / "Data#1", "piece");
    run.desktop.clipboard = "before";
  }
  bool Relocate() { return run.BareWindow().RelocateInstaller(Utf8(run.Resources() / "Data#1")); }
  StubRun run;
  const fs::path temporary = run.scratch / "Temporary";
};

TEST_F(Relocation, SplitSetupLaunchesACopyAndPassesItsFolder) {
  EXPECT_TRUE(Relocate());
  ASSERT_EQ(run.desktop.launched.size(), 1U);
  const fs::path copy = run.desktop.launched.front();
  const int number = std::stoi(copy.parent_path().filename());
  EXPECT_TRUE(number >= 1000 && number <= 9999) << number;
  EXPECT_EQ(copy, temporary / std::to_string(number) / "Setup.app");
  std::map<std::string, std::string> expected = Tree(run.Bundle());
  expected["Contents/Helpers/ditto"] = ReadFile(run.Bundle() / "Contents/Helpers/ditto");
  EXPECT_EQ(Tree(copy), expected);
  EXPECT_EQ(run.desktop.clipboard, run.Disk().string() + "/");
}

TEST_F(Relocation, EarlierCopyOfTheSameNumberIsDeletedFirst) {
  const fs::path earlier = temporary / "earlier";
  WriteFile(earlier / "Setup.app/stale", "s");
  for (int number = 1000; number <= 9999; ++number) {
    fs::create_directory_symlink("earlier", temporary / std::to_string(number));
  }
  EXPECT_TRUE(Relocate());
  EXPECT_TRUE(fs::exists(earlier / "Setup.app/Contents"));
  EXPECT_FALSE(fs::exists(earlier / "Setup.app/stale"));
}

TEST_F(Relocation, SetupInOneFileDoesNotRelocate) {
  fs::remove(run.Resources() / "Data#1");
  EXPECT_FALSE(Relocate());
  EXPECT_EQ(run.desktop.clipboard, "before");
  EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(Relocation, CopyDoesNotRelocateWhereverTheTemporaryFolderIsInItsPath) {
  run.machine.temporaryFolder = run.Disk().string().substr(4);
  EXPECT_TRUE(run.BareWindow().RunningRelocatedInstaller());
  EXPECT_FALSE(Relocate());
  EXPECT_EQ(run.desktop.clipboard, "before");
}

TEST_F(Relocation, FailedCopyIsSilentAndStillEndsTheInstall) {
  fs::permissions(temporary, fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  EXPECT_TRUE(Relocate());
  EXPECT_TRUE(run.desktop.launched.empty());
  EXPECT_EQ(run.desktop.clipboard, run.Disk().string() + "/");
}

}  // namespace
}  // namespace zephin::test
