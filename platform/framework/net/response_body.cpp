#include "platform/framework/net/response_body.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/framework/application.h"

namespace zephin {
namespace {

constexpr std::size_t kFirstBlock = std::size_t{64} << 10U;
/// Blocks of this size return to the system as soon as they are freed.
constexpr std::size_t kLargestBlock = std::size_t{64} << 20U;
/// Kept free for the rest of the program and for other processes.
constexpr std::size_t kReserve = std::size_t{16} << 20U;
/// This much is joined between two yields, so that the window stays responsive.
constexpr std::size_t kSlice = std::size_t{4} << 20U;

}  // namespace

bool ResponseBody::Add(std::span<const char> bytes) {
  while (!bytes.empty()) {
    if (blocks_.empty() || blocks_.back().size() == blocks_.back().capacity()) {
      if (!AddBlock()) {
        return false;
      }
    }
    std::string& block = blocks_.back();
    const std::size_t count = std::min(bytes.size(), block.capacity() - block.size());
    block.append(bytes.data(), count);
    size_ += count;
    bytes = bytes.subspan(count);
  }
  return !dropped_;
}

bool ResponseBody::AddBlock() {
  const std::size_t size = std::clamp(size_, kFirstBlock, kLargestBlock);
  // Twice the size, since while a block is joined its bytes exist twice.
  if (!dropped_ && available_() >= static_cast<std::int64_t>(2 * size + kReserve)) {
    try {
      // This only reserves addresses: the system assigns each page when it is first written.
      blocks_.emplace_back().reserve(size);
      return true;
    } catch (const std::bad_alloc&) {
      // Handled like a lack of memory reported in advance.
    }
  }
  Drop();
  return false;
}

std::string ResponseBody::Join() {
  std::string whole;
  try {
    whole.reserve(size_);
  } catch (const std::bad_alloc&) {
    Drop();
  }
  for (std::string& block : blocks_) {
    const std::string part = std::exchange(block, {});
    for (std::size_t done = 0; done < part.size(); done += kSlice) {
      whole.append(part, done, kSlice);
      if (part.size() - done > kSlice) {
        RuntimeBackgroundTask();
      }
    }
  }
  blocks_.clear();
  return whole;
}

void ResponseBody::Drop() {
  blocks_.clear();
  size_ = 0;
  dropped_ = true;
}

}  // namespace zephin
