#include "platform/framework/net/response_body.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/framework/application.h"

namespace zephin {
namespace {

constexpr std::size_t kFirstBlock = std::size_t{64} << 10U;
/// Large enough to be given back to the system as soon as it is freed.
constexpr std::size_t kLargestBlock = std::size_t{64} << 20U;
/// What is left to the rest of the program, and to others.
constexpr std::size_t kReserve = std::size_t{16} << 20U;
/// What is joined before events run, so that the window stays alive.
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
  // Twice, since the last block to be joined is there twice for a moment.
  if (!dropped_ && available_() >= static_cast<std::int64_t>(2 * size + kReserve)) {
    try {
      // A page of it is only taken when bytes arrive for it.
      blocks_.emplace_back().reserve(size);
      return true;
    } catch (const std::bad_alloc&) {
      // The same as a "no" before.
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
