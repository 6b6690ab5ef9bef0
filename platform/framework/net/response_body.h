#ifndef PLATFORM_FRAMEWORK_NET_RESPONSE_BODY_H_
#define PLATFORM_FRAMEWORK_NET_RESPONSE_BODY_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/framework/net/host_facts.h"

namespace zephin {

/// Collects the bytes of a response of unknown size, as long as there is memory for them. The bytes
/// are kept in blocks, so that memory holds them only once, even while they are joined at the end.
class ResponseBody {
 public:
  /// `available` returns how many bytes may be allocated; it is called before each block.
  explicit ResponseBody(std::int64_t (*available)() = AvailableMemory) : available_(available) {}

  /// Adds bytes. False if memory runs short: everything collected so far is dropped, and all later
  /// bytes are refused.
  [[nodiscard]] bool Add(std::span<const char> bytes);

  /// All bytes in one text; empty if memory has run short or runs short now. Events are processed
  /// meanwhile. May be called once.
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
