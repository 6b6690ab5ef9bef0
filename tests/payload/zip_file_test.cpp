#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "util/my_get_folder_item.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using GlobalsVk::MyGetFolderItem;

TEST(ZipFileProcess, FillsTheBarForTheTimeThatTheLengthIsGiven) {
  constexpr int kNoFile = -1;
  const struct {
    std::int64_t length;
    std::int64_t ticks;
    std::int64_t slowTicks;
  } rows[] = {
      {kNoFile, 30, 60},         {0, 30, 60},
      {2'999'999, 30, 60},       {3'000'000, 60, 120},
      {30'000'000, 330, 660},    {30'000'001, 165, 330},
      {300'000'000, 1515, 3030}, {300'000'001, 757, 1515},
  };
  const struct {
    std::optional<std::int64_t> major, minor;
    bool slow;
  } systems[] = {
      {10, 13, true},
      {11, 13, true},
      {10, 15, false},
      {10, 12, false},
      {std::nullopt, 13, false},
      {13, std::nullopt, false},
  };
  for (const auto& system : systems) {
    StubRun run;
    run.machine.systemMajor = system.major;
    run.machine.systemMinor = system.minor;
    ZephinStubWindow& window = run.BareWindow();
    for (const auto& row : rows) {
      const fs::path zip = run.scratch / "x.zip";
      if (row.length != kNoFile) {
        WriteFile(zip, "");
        fs::resize_file(zip, static_cast<std::uintmax_t>(row.length));
      }
      const std::int64_t start = run.desktop.milliseconds = 0;
      window.ZipFileProcess("", MyGetFolderItem(Utf8(zip)));
      const std::int64_t ticks = system.slow ? row.slowTicks : row.ticks;
      EXPECT_EQ(window.ProgressBar1()->Maximum(), ticks) << row.length;
      EXPECT_EQ(window.ProgressBar1()->Value(), ticks) << row.length;
      EXPECT_TRUE(window.ProgressBar1()->Visible());
      // It ends as soon as one tick more than the time has passed.
      EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds - start),
                  static_cast<double>(ticks + 1) * 1000 / 60, 10)
          << row.length;
    }
  }
}

TEST(ZipFileDelete, WithNothingToDoTakesNoTime) {
  StubRun run;
  run.BareWindow().ZipFileDelete(Utf8(run.scratch / "none.zip"), nullptr);
  run.BareWindow().ZipFileDelete("", nullptr);
  EXPECT_EQ(run.desktop.milliseconds, 0);
}

TEST(ZipFileDelete, StartsTheProgramFirstAndTriesEverySecond) {
  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  const fs::path zip = run.scratch / "locked/x.zip";
  WriteFile(zip, "x");
  fs::permissions(zip.parent_path(), fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  bool stoodAtLaunch = false;
  run.desktop.onLaunch = [&](const std::string&) { stoodAtLaunch = fs::exists(zip); };
  run.desktop.After(2500, [&] { fs::permissions(zip.parent_path(), fs::perms(0755)); });

  window.ZipFileDelete(Utf8(zip), MyGetFolderItem("/bin/after"));

  EXPECT_TRUE(stoodAtLaunch);
  EXPECT_EQ(run.desktop.launched, std::vector<std::string>{"/bin/after"});
  EXPECT_FALSE(fs::exists(zip));
  // Tries at 0, 1, 2 and 3 seconds, with a second after the last one too.
  EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds), 4000, 150);
}

TEST(ZipFileDelete, ADanglingLinkGoesToo) {
  StubRun run;
  fs::create_symlink("nowhere", run.scratch / "x.zip");
  run.BareWindow().ZipFileDelete(Utf8(run.scratch / "x.zip"), nullptr);
  EXPECT_FALSE(fs::is_symlink(run.scratch / "x.zip"));
}

}  // namespace
}  // namespace zephin::test
