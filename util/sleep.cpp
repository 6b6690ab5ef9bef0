#include "util/sleep.h"

#include "platform/framework/application.h"

namespace zephin::ViewConst {

void Sleep(std::int64_t seconds) {
  constexpr std::int64_t kTicksPerSecond = 60;
  const std::int64_t start = Ticks();
  while (Ticks() < start + seconds * kTicksPerSecond) {
    WaitingBackgroundTask();
  }
}

}  // namespace zephin::ViewConst
