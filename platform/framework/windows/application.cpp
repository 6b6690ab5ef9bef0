#include "platform/framework/application.h"

#include <ctime>
#include <exception>
#include <new>
#include <stdexcept>
#include <typeinfo>
#include <utility>

namespace zephin {
namespace {

Application* current = nullptr;

/// The name under which the current exception is reported.
String KindOfFailure() {
  try {
    throw;
  } catch (const FrameworkException& failure) {
    return failure.Kind();
  } catch (const std::bad_alloc&) {
    return OutOfMemoryException().Kind();
  } catch (const std::length_error&) {
    return OutOfMemoryException().Kind();
  } catch (const std::exception& failure) {
    return Utf8(typeid(failure).name());
  }
}

constexpr int kMillisecondsPerTick = 16;

/// Milliseconds of a clock that advances every few milliseconds, fine enough for a time slice.
/// Reading it takes a few nanoseconds, so that every loop can do it.
std::int64_t CoarseMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
  return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

/// The next time to process events. A plain variable outside of the application object, so that a
/// yield before it costs only the reading of the clock.
std::int64_t nextLook = 0;

void LetEventsRun(int milliseconds) {
  Desktop& desktop = Application::Current().Session();
  desktop.LetEventsRun(milliseconds);
  // The slice begins after the events: otherwise a slow handler would use it up.
  nextLook = CoarseMilliseconds() + desktop.YieldSlice();
}

}  // namespace

Application::Application(Desktop& desktop, Machine machine)
    : desktop_(desktop), machine_(std::move(machine)) {
  if (current != nullptr) {
    throw std::logic_error("a second application object");
  }
  current = this;
  nextLook = 0;
}

Application::~Application() {
  current = nullptr;
}

Application& Application::Current() {
  if (current == nullptr) {
    throw std::logic_error("no application object");
  }
  return *current;
}

bool Application::Exists() {
  return current != nullptr;
}

Ref<FolderItem> Application::ExecutableFile() const {
  return machine_.executable.empty() ? nullptr : MakeRef<FolderItem>(machine_.executable);
}

void Application::DoEvents(int milliseconds) {
  desktop_.LetEventsRun(milliseconds);
}

void Application::SetMouseCursor(MouseCursor cursor) {
  desktop_.SetMouseCursor(cursor);
}

void Application::CallHandler(const std::function<void()>& handler) {
  try {
    handler();
  } catch (const QuitUnwinding& quit) {
    desktop_.EndRun(quit.Status());
  } catch (const std::exception&) {
    desktop_.ReportFailure(KindOfFailure());
    desktop_.EndRun(0);
  }
}

void Quit(int status) {
  throw QuitUnwinding(status);
}

void MsgBox(const String& text) {
  Application::Current().Session().ShowMessage(text);
}

void ShowURL(const String& address) {
  Application::Current().Session().OpenAddress(address);
}

std::int64_t Ticks() {
  return Application::Current().Session().Ticks();
}

void RuntimeBackgroundTask() {
  if (CoarseMilliseconds() >= nextLook && Application::Exists()) {
    LetEventsRun(0);
  }
}

void WaitingBackgroundTask() {
  LetEventsRun(kMillisecondsPerTick);
}

}  // namespace zephin
