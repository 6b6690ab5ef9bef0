#include <gtest/gtest.h>

#include "payload/zip_file.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "tools/make_setup/zip_folder.h"
#include "util/paths.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using GlobalsVk::MyGetFolderItem;
using Number = std::optional<std::int64_t>;

TEST(ZipFile, BarRunsForTheTimeOfLengthAndSystem) {
  const std::vector<std::tuple<std::uintmax_t, Number, Number, std::int64_t>> rows{
      {0, 10, 15, 30},
      {2'999'999, 10, 15, 30},
      {3'000'000, 10, 15, 60},
      {30'000'000, 10, 15, 330},
      {30'000'001, 10, 15, 165},
      {300'000'000, 10, 15, 1515},
      {300'000'001, 10, 15, 757},
      // Minor version 13 is slow, with any major version.
      {0, 10, 13, 60},
      {300'000'001, 11, 13, 1515},
      {0, 10, 12, 30},
      {0, std::nullopt, 13, 30},
      {0, 13, std::nullopt, 30},
  };
  for (const auto& [length, major, minor, ticks] : rows) {
    StubRun run;
    run.machine.systemMajor = major;
    run.machine.systemMinor = minor;
    const Ref<ProgressBar> bar = run.BareWindow().ProgressBar1();
    WriteFile(run.scratch / "x.zip", "");
    fs::resize_file(run.scratch / "x.zip", length);
    run.BareWindow().ZipFileProcess("", MyGetFolderItem(Utf8(run.scratch / "x.zip")));
    EXPECT_EQ(bar->Maximum(), ticks) << length;
    EXPECT_EQ(bar->Value(), ticks) << length;
    EXPECT_TRUE(bar->Visible());
    // It ends one tick later.
    const double end = static_cast<double>(ticks + 1) * 1000 / 60;
    EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds), end, 10) << length;
  }
}

TEST(ZipFile, DeletionLaunchesTheProgramFirstAndRetriesEverySecond) {
  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  window.ZipFileDelete(Utf8(run.scratch / "none.zip"), nullptr);
  window.ZipFileDelete("", nullptr);
  EXPECT_EQ(run.desktop.milliseconds, 0);

  const fs::path zip = run.scratch / "locked/x.zip";
  WriteFile(zip, "x");
  fs::permissions(zip.parent_path(), fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  bool existedAtLaunch = false;
  run.desktop.onLaunch = [&](const std::string&) { existedAtLaunch = fs::exists(zip); };
  run.desktop.After(2500, [&] { fs::permissions(zip.parent_path(), fs::perms(0755)); });
  window.ZipFileDelete(Utf8(zip), MyGetFolderItem("/bin/after"));
  EXPECT_TRUE(existedAtLaunch);
  EXPECT_EQ(run.desktop.launched, std::vector<std::string>{"/bin/after"});
  EXPECT_FALSE(fs::exists(zip));
  // Attempts at 0, 1, 2 and 3 seconds, each followed by a second.
  EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds), 4000, 150);
}

TEST(ZipFile, ExpandsOverAnExistingFolderOrAfterDeletingIt) {
  using Expected = std::map<std::string, std::string>;
  using ViewConst::ZipFileToFolder;
  StubRun run;
  run.BareWindow();
  const auto zip = run.scratch / "it's a $(zip) \"x\".zip";
  const auto folder = run.scratch / "two words\n& more";
  WriteFile(run.scratch / "content/new", "n");
  make_setup::ZipFolder(run.scratch / "content", zip, {.topName = "Top"});
  WriteFile(folder / "old", "o");
  EXPECT_TRUE(ZipFileToFolder(Utf8(zip), Utf8(folder), false));
  EXPECT_EQ(Tree(folder), (Expected{{"old", "o"}, {"Top", "/"}, {"Top/new", "n"}}));
  EXPECT_TRUE(ZipFileToFolder(Utf8(zip), Utf8(folder), true));
  EXPECT_EQ(Tree(folder), (Expected{{"Top", "/"}, {"Top/new", "n"}}));
  EXPECT_FALSE(ZipFileToFolder(Utf8(zip) + "x", Utf8(folder), false));
  EXPECT_THROW((void)ZipFileToFolder("a.zip", "/to", false), NilObjectException);
}

}  // namespace
}  // namespace zephin::test
