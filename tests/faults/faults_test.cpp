#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

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

TEST_P(Faults, WhateverCallFailsTheWorkEndsAndReportsAndTheNextOneIsWhole) {
  const Outcome whole = DoWhole();
  std::set<std::string> silent;
  for (const Failing which : {Failing::One, Failing::Growing}) {
    CallCounts tried;
    for (bool failed = true; failed;) {
      StubRun run;
      Prepare(run);
      auto failing = std::make_unique<FailingCalls>(which, run.scratch.Path(), tried);
      const Outcome outcome = Do(run);
      const std::string call = FailingCalls::First();
      failing.reset();
      failed = !call.empty();
      SCOPED_TRACE(call + (which == Failing::One ? ", once" : ", and all behind it"));
      EXPECT_FALSE(outcome.tree.contains("Tool.zip") && GetParam().name != "Split");
      if (which == Failing::One && !outcome.Has(whole) && outcome.told.empty()) {
        silent.insert(call);
      }
      if (which == Failing::Growing) {
        // The user makes room and tries again. A list never copies over what exists already.
        fs::remove_all(PlaceOf(run) / "pre");
        const Outcome next = Do(run);
        EXPECT_TRUE(next.Has(whole));
        EXPECT_EQ(next.told, std::vector<std::string>());
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
