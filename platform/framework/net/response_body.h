#ifndef PLATFORM_FRAMEWORK_NET_RESPONSE_BODY_H_
#define PLATFORM_FRAMEWORK_NET_RESPONSE_BODY_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/framework/net/host_facts.h"

namespace zephin {

/// Collects the bytes of a response whose size nobody knows, as long as there is memory for them.
/// They are kept in blocks, so that memory holds them once at any time, also while they are joined
/// at the end.
class ResponseBody {
 public:
  /// `available` tells how many bytes may be taken; it is asked before each block.
  explicit ResponseBody(std::int64_t (*available)() = AvailableMemory) : available_(available) {}

  /// Adds bytes. False when memory runs short; all that was collected is dropped then, and nothing
  /// is added any more.
  [[nodiscard]] bool Add(std::span<const char> bytes);

  /// All that was collected, joined. Empty if memory ran short, now or before. To be called once.
  std::string Join();

 private:
  [[nodiscard]] bool AddBlock();
  void Drop();

  std::int64_t (*available_)();
  std::vector<std::string> blocks_;
  std::size_t size_ = 0;
  bool dropped_ = false;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_NET_RESPONSE_BODY_H_
