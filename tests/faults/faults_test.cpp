#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/faults/failing_calls.h"
#include "tests/faults/works.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

/// The state of a machine after a run.
struct Outcome {
  Contents tree;
  std::vector<std::string> reported;

  /// Whether all items of `whole` exist. A failed step may leave further items.
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
  /// Does the work once. A fault of the disk raises no exception, and the work always ends.
  static Outcome Do(StubRun& run) {
    run.desktop.reported.clear();
    EXPECT_EQ(run.Call([&] { GetParam().act(run, run.BareWindow()); }), -1);
    EXPECT_EQ(run.desktop.failures, std::vector<std::string>());
    return {Tree(PlaceOf(run)), run.desktop.reported};
  }
  static Outcome DoWhole() {
    StubRun run;
    Prepare(run);
    Outcome whole = Do(run);
    EXPECT_EQ(whole.reported, std::vector<std::string>());
    return whole;
  }
};

TEST_P(Faults, AfterAnyFailedCallTheRunEndsReportsAndTheNextRunIsComplete) {
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
      if (which == Failing::One && !outcome.Has(whole) && outcome.reported.empty()) {
        silent.insert(call);
      }
      if (which == Failing::Growing) {
        // The user makes room and tries again. A list never copies over what exists already.
        fs::remove_all(PlaceOf(run) / "pre");
        const Outcome next = Do(run);
        EXPECT_TRUE(next.Has(whole));
        EXPECT_EQ(next.reported, std::vector<std::string>());
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
