// What the threads of an expansion share: a switch that stops them, and a queue of blocks.
#ifndef PLATFORM_EXPANDER_STEPS_THREADS_H_
#define PLATFORM_EXPANDER_STEPS_THREADS_H_

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/expander/common/resources.h"

namespace zephin::expander {

/// Stops the working threads.
class WorkControl {
 public:
  /// The working threads ask this before each item that they make, and end once it is true.
  bool Stopped() const { return stopped_.load(std::memory_order_relaxed); }
  /// Can't be undone.
  void Stop() { stopped_.store(true, std::memory_order_relaxed); }

 private:
  std::atomic<bool> stopped_ = false;
};

/// A bounded queue of blocks from one thread that fills them to one that empties them.
class Relay {
 public:
  Relay(std::size_t blocks, std::size_t blockSize);

  std::size_t BlockSize() const { return blocks_.front().Size(); }

  /// For the thread that fills: Free waits for a free block (nil if the other thread has given up),
  /// Send passes on its first `size` bytes. End must be called in any case.
  char* Free();
  void Send(std::size_t size);
  void End();

  /// For the thread that empties: Full waits for the next bytes (nothing at the end), GiveBack
  /// frees their block. GiveUp is called on a fault.
  std::optional<std::string_view> Full();
  void GiveBack();
  void GiveUp();

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Block> blocks_;
  std::vector<std::size_t> sizes_;
  /// Number of blocks sent and given back since the start.
  std::size_t sent_ = 0;
  std::size_t back_ = 0;
  bool ended_ = false;
  bool givenUp_ = false;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_STEPS_THREADS_H_
