#include <gtest/gtest.h>

#include "tests/support/limits.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

class Relocation : public testing::Test {
 protected:
  /// Whether a setup whose first piece lies in the bundle moves.
  bool Relocate() { return run.BareWindow().RelocateInstaller(Utf8(run.Resources() / "Data#1")); }
  void SetUp() override {
    WriteFile(run.Resources() / "Data#1", "piece");
    run.desktop.clipboard = "before";
  }
  void ExpectUntouched() {
    EXPECT_EQ(run.desktop.clipboard, "before");
    EXPECT_TRUE(run.desktop.launched.empty());
  }

  StubRun run;
  const fs::path temporary = run.scratch / "Temporary";
};

TEST_F(Relocation, SplitSetupGoesOnAsACopyThatLearnsWhereItCameFrom) {
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
  EXPECT_FALSE(run.BareWindow().RunningRelocatedInstaller());
}

TEST_F(Relocation, SetupInOneFileStays) {
  fs::remove(run.Resources() / "Data#1");
  EXPECT_FALSE(Relocate());
  EXPECT_FALSE(run.BareWindow().RelocateInstaller(""));
  ExpectUntouched();
  EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(Relocation, ACopyStays) {
  run.machine.temporaryFolder = run.Disk();
  EXPECT_FALSE(Relocate());
  EXPECT_TRUE(run.BareWindow().RunningRelocatedInstaller());
  ExpectUntouched();
}

TEST_F(Relocation, TemporaryFolderCountsWhereverItStandsInThePath) {
  run.machine.temporaryFolder = "/tmp/zephin-none";
  run.machine.executable = "/x/tmp/zephin-none/S.app/Contents/MacOS/S";
  EXPECT_TRUE(run.BareWindow().RunningRelocatedInstaller());
}

TEST_F(Relocation, FailedCopyIsSilentAndStillEndsTheInstall) {
  fs::permissions(temporary, fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  EXPECT_TRUE(Relocate());
  EXPECT_TRUE(run.desktop.launched.empty());
  EXPECT_EQ(run.desktop.clipboard, run.Disk().string() + "/");
}

TEST_F(Relocation, FirstAppInThePathIsTakenForTheBundle) {
  const fs::path apps = run.scratch / "My.Apple/Setup.app";
  WriteFile(apps / "Contents/Resources/Data#1", "piece");
  WriteFile(run.scratch / "My.App/file", "taken along");
  run.machine.executable = apps / "Contents/MacOS/Setup";
  EXPECT_TRUE(run.BareWindow().RelocateInstaller(Utf8(apps / "Contents/Resources/Data#1")));
  ASSERT_EQ(run.desktop.launched.size(), 1U);
  EXPECT_EQ(Tree(run.desktop.launched.front()).at("file"), "taken along");
  EXPECT_EQ(run.desktop.clipboard, run.scratch.Path().string() + "/");
}

}  // namespace
}  // namespace zephin::test
