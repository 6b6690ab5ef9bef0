#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "tests/faults/failing_calls.h"
#include "tests/faults/works.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

/// What has become of a machine.
struct Outcome {
  Contents tree;
  std::vector<std::string> told;

  /// Whether all of `whole` is there. More may be: what is left of something that failed.
  bool Has(const Outcome& whole) const { return std::ranges::includes(tree, whole.tree); }
};

class Faults : public testing::TestWithParam<Work> {
 protected:
  static void Prepare(StubRun& run) {
    run.desktop.AgreeToAll(PlaceOf(run));
    fs::create_directories(PlaceOf(run));
    run.BareWindow();
    GetParam().prepare(run);
  }
  /// Does the work once. No fault of the disk is one of the program: nothing is raised, and the
  /// work comes to its end.
  static Outcome Do(StubRun& run) {
    run.desktop.told.clear();
    EXPECT_EQ(run.Call([&] { GetParam().act(run, run.BareWindow()); }), -1);
    EXPECT_EQ(run.desktop.failures, std::vector<std::string>());
    return {Tree(PlaceOf(run)), run.desktop.told};
  }
  static Outcome DoWhole() {
    StubRun run;
    Prepare(run);
    Outcome whole = Do(run);
    EXPECT_EQ(whole.told, std::vector<std::string>());
    return whole;
  }
};

/// A file system in memory on a folder, which this process alone sees.
struct SmallDisk {
  std::string folder;

  ~SmallDisk() { umount2(folder.c_str(), MNT_DETACH); }
  bool Mount() const {
    const bool isOurs = unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
    return isOurs && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", folder.c_str(), "tmpfs", 0, nullptr) == 0;
  }
  /// Leaves room for so many blocks more than there are.
  void Leave(std::size_t blocks) const {
    struct statvfs state {};
    ASSERT_EQ(statvfs(folder.c_str(), &state), 0);
    const std::size_t used = state.f_blocks - state.f_bfree;
    const std::string size = "size=" + std::to_string((used + blocks) * state.f_bsize);
    ASSERT_EQ(mount(nullptr, folder.c_str(), nullptr, MS_REMOUNT, size.c_str()), 0);
  }
};

TEST_P(Faults, OnASmallDiskTheWorkEndsAndWithMoreRoomTheNextIsWhole) {
  const Outcome whole = DoWhole();
  constexpr std::size_t kEnough = 100;
  std::size_t room = 0;
  for (bool fits = false; !fits; ++room) {
    SCOPED_TRACE(std::to_string(room) + " blocks");
    ASSERT_LT(room, kEnough);
    StubRun run;
    fs::create_directory(PlaceOf(run));
    const SmallDisk disk{PlaceOf(run)};
    if (!disk.Mount()) {
      GTEST_SKIP() << "no right to mount a file system: " << std::strerror(errno);
    }
    Prepare(run);
    // Of no block at all, the system would make a disk without end.
    disk.Leave(room + 1);
    WriteFile(PlaceOf(run) / "filling", "x");
    const Outcome outcome = Do(run);
    fits = outcome.Has(whole) && outcome.told.empty();
    disk.Leave(kEnough);
    // What stands there is never copied over before an install.
    fs::remove_all(PlaceOf(run) / "pre");
    const Outcome next = Do(run);
    EXPECT_TRUE(next.Has(whole));
    EXPECT_EQ(next.told, std::vector<std::string>());
  }
  EXPECT_GT(room, 1U) << "the disk was never too small";
}

TEST_P(Faults, WhateverCallFailsTheWorkEndsAndTellsWhatIsMissing) {
  const Outcome whole = DoWhole();
  std::set<std::string> silent;
  for (const Failing which : {Failing::One, Failing::Growing}) {
    CallCounts tried;
    for (bool failed = true; failed;) {
      StubRun run;
      Prepare(run);
      const FailingCalls failing(which, run.scratch.Path(), tried);
      const Outcome outcome = Do(run);
      const std::string call = FailingCalls::First();
      failed = !call.empty();
      SCOPED_TRACE(call + (which == Failing::One ? ", once" : ", and all behind it"));
      EXPECT_FALSE(outcome.tree.contains("Tool.zip") && GetParam().name != "Split");
      if (which == Failing::One && !outcome.Has(whole) && outcome.told.empty()) {
        silent.insert(call);
      }
    }
    EXPECT_GT(tried.size(), 1U) << "the calls aren't led to where they fail";
  }
  EXPECT_EQ(silent, GetParam().silent);
}

INSTANTIATE_TEST_SUITE_P(Works, Faults, testing::ValuesIn(Works()),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace zephin::test
