#include <benchmark/benchmark.h>

#include "platform/framework/application.h"
#include "tests/support/quiet_desktop.h"

namespace zephin {
namespace {

constexpr int kSlice = 10;

/// What a loop pays for each pass: nearly all of its yields find that no slice is due.
void YieldWithNoSliceDue(benchmark::State& state) {
  QuietDesktop desktop;
  desktop.slice = kSlice;
  const Application application(desktop, Machine());
  for ([[maybe_unused]] auto pass : state) {
    RuntimeBackgroundTask();
  }
}
BENCHMARK(YieldWithNoSliceDue);

}  // namespace
}  // namespace zephin
