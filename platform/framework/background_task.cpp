#include <ctime>

#include "platform/framework/application.h"

namespace zephin {
namespace {

constexpr int kMillisecondsPerTick = 16;

/// Milliseconds on a clock whose reading costs a few nanoseconds and that moves every few
/// milliseconds: fine enough for a slice, and cheap enough to be looked at in every loop.
std::int64_t CoarseMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
  return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

std::int64_t lastLook = 0;

}  // namespace

void RuntimeBackgroundTask() {
  Desktop& desktop = App().Session();
  const int slice = desktop.YieldSlice();
  if (slice > 0) {
    const std::int64_t now = CoarseMilliseconds();
    if (now - lastLook < slice) {
      return;
    }
  }
  desktop.LetEventsRun(0);
  // Taken after the events, so that a slow handler doesn't make the next yield due at once.
  lastLook = CoarseMilliseconds();
}

void WaitingBackgroundTask() {
  App().Session().LetEventsRun(kMillisecondsPerTick);
  lastLook = CoarseMilliseconds();
}

}  // namespace zephin
