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

/// The time before which no slice is due. It stands alone, so that a yield before it costs no more
/// than the clock.
std::int64_t nextLook = 0;

void LetEventsRun(int milliseconds) {
  Desktop& desktop = Application::Current().Session();
  desktop.LetEventsRun(milliseconds);
  // Taken after the events, so that a slow handler doesn't make the next yield due at once.
  nextLook = CoarseMilliseconds() + desktop.YieldSlice();
}

}  // namespace

void RuntimeBackgroundTask() {
  if (CoarseMilliseconds() >= nextLook && Application::Exists()) {
    LetEventsRun(0);
  }
}

void WaitingBackgroundTask() {
  LetEventsRun(kMillisecondsPerTick);
}

void MakeYieldDue() {
  nextLook = 0;
}

}  // namespace zephin
