// What the threads of an expansion share: a switch that stops them, and blocks of bytes in transit.
#ifndef PLATFORM_EXPANDER_WORK_THREADS_H_
#define PLATFORM_EXPANDER_WORK_THREADS_H_

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/expander/common/resources.h"

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

class Relay {
 public:
  Relay(std::size_t blocks, std::size_t blockSize);

  std::size_t BlockSize() const { return blocks_.front().Size(); }

  /// The maker's side: waits for a free block, nil when the taker has given up; fills it, and sends
  /// its first `size` bytes. At the end, whatever happened: End.
  char* Free();
  void Send(std::size_t size);
  void End();

  /// The taker's side: waits for the next bytes, nothing at the end; gives their block back. On a
  /// fault: GiveUp.
  std::optional<std::string_view> Full();
  void GiveBack();
  void GiveUp();

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Block> blocks_;
  std::vector<std::size_t> sizes_;
  /// Blocks sent and given back since the start.
  std::size_t sent_ = 0;
  std::size_t back_ = 0;
  bool ended_ = false;
  bool givenUp_ = false;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_WORK_THREADS_H_
