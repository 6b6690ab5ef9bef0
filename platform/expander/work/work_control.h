// Lets the threads of an expansion be held and stopped from outside.
#ifndef PLATFORM_EXPANDER_WORK_WORK_CONTROL_H_
#define PLATFORM_EXPANDER_WORK_WORK_CONTROL_H_

#include <atomic>
#include <cstdint>

namespace zephin::expander {

class WorkControl {
 public:
  /// Asked by the working threads before each step on disk: waits while they are held, and is false
  /// when they must end.
  bool Proceed();

  void Hold();
  void Resume();
  /// For good.
  void Stop();
  bool Stopped() const { return state_.load() == State::Stopped; }

  /// Folders, files and links that the threads made so far, and those of them that they took away.
  std::atomic<std::uint64_t> made = 0;
  std::atomic<std::uint64_t> removed = 0;

 private:
  enum class State : std::uint8_t { Running, Held, Stopped };
  void Change(State from, State to);

  std::atomic<State> state_ = State::Running;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_WORK_WORK_CONTROL_H_
