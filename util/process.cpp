#include "util/process.h"

#include "platform/framework/application.h"

namespace zephin::ViewConst {

void Sleep(std::int64_t seconds) {
  constexpr std::int64_t kTicksPerSecond = 60;
  // Ticks instead of one long wait: the desktop's clock decides, and tests replace it.
  const std::int64_t start = Ticks();
  while (Ticks() < start + seconds * kTicksPerSecond) {
    WaitingBackgroundTask();
  }
}

void MyProcessToTop() {
  Application::Current().Session().BringToFront();
}

}  // namespace zephin::ViewConst
