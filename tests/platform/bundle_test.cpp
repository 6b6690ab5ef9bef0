#include <gtest/gtest.h>

#include "platform/access_rights.h"
#include "platform/bundle_location.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "util/globals.h"
#include "util/my_get_folder_item.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

TEST(BundleLocation, FirstContentsOfTheExecutablesPathDecides) {
  const std::vector<std::tuple<const char*, const char*, const char*>> rows{
      {"/Disk/Setup.app/Contents/MacOS/Setup", "/Disk/", "/Disk/Setup.app/Contents"},
      {"/Users/a/ContentsOld/S.app/Contents/MacOS/x", "/Users/", "/Users/a/Contents"},
      {"/\u00E9\xFF/S.app/CONTENTS/x", "/\u00E9\xFF/", "/\u00E9\xFF/S.app/CONTENTS"},
      {"/AppTranslocation/S.app/Contents/x", "/AppTranslocation/",
       "/AppTranslocation/S.app/Contents"},
      {"/usr/bin/setup", "", ""},
  };
  for (const auto& [executable, folder, contentsPath] : rows) {
    StubRun run;
    run.machine.executable = executable;
    run.BareWindow();
    EXPECT_EQ(ViewConst::GetApplicationPath().Bytes(), folder) << executable;
    const Ref<FolderItem> contents = ViewConst::ContentsFolder();
    EXPECT_EQ(contents.IsNil() ? "" : contents->NativePath().Bytes(), contentsPath);
  }
}

TEST(BundleLocation, TranslocationEndsTheRunWhereItIsNotIgnored) {
  StubRun run;
  run.machine.executable = "/a/AppTranslocation/S.app/Contents/MacOS/S";
  run.BareWindow();
  ViewConst::gIgnoreTranslocationError = false;
  run.desktop.ExpectWindow("Gatekeeper Translocation Issue", "CancelBtn");
  EXPECT_EQ(run.Call([] { (void)ViewConst::GetApplicationPath(); }), 0);
}

TEST(AccessRights, AreGivenToTheItemAloneWhateverItsName) {
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
  // From a tree that is deleted they don't go to a target that stays.
  ViewConst::AllUsersFullAccessInTree(alias);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0400));
  ViewConst::AllUsersFullAccess(Utf8(file));
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0666));
  ViewConst::AllUsersFullAccessOnMac(alias);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0777));
  EXPECT_FALSE(fs::exists("evil"));
}

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
}

TEST_F(Relocation, ASetupInOneFileStays) {
  fs::remove(run.Resources() / "Data#1");
  EXPECT_FALSE(Relocate());
  EXPECT_EQ(run.desktop.clipboard, "before");
  EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(Relocation, ACopyStaysWhereverTheTemporaryFolderStandsInItsPath) {
  run.machine.temporaryFolder = run.Disk().string().substr(4);
  EXPECT_TRUE(run.BareWindow().RunningRelocatedInstaller());
  EXPECT_FALSE(Relocate());
  EXPECT_EQ(run.desktop.clipboard, "before");
}

TEST_F(Relocation, AFailedCopyIsSilentAndStillEndsTheInstall) {
  fs::permissions(temporary, fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  EXPECT_TRUE(Relocate());
  EXPECT_TRUE(run.desktop.launched.empty());
  EXPECT_EQ(run.desktop.clipboard, run.Disk().string() + "/");
}

}  // namespace
}  // namespace zephin::test
