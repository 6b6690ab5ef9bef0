// Blocks of bytes on their way from one thread that makes them to one that takes them, a bounded
// number of them.
#ifndef PLATFORM_EXPANDER_WORK_RELAY_H_
#define PLATFORM_EXPANDER_WORK_RELAY_H_

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/expander/common/block.h"

namespace zephin::expander {

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

#endif  // PLATFORM_EXPANDER_WORK_RELAY_H_
