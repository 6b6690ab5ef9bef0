#include "platform/expander/steps/threads.h"

namespace zephin::expander {

Relay::Relay(std::size_t blocks, std::size_t blockSize) : sizes_(blocks) {
  for (std::size_t i = 0; i < blocks; ++i) {
    blocks_.emplace_back(blockSize);
  }
}

char* Relay::Free() {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait(lock, [this] { return givenUp_ || sent_ - back_ < blocks_.size(); });
  // Blocks are used in turn, so the next one is free as soon as any is.
  return givenUp_ ? nullptr : blocks_[sent_ % blocks_.size()].Data();
}

void Relay::Send(std::size_t size) {
  const std::lock_guard<std::mutex> lock(mutex_);
  sizes_[sent_ % blocks_.size()] = size;
  ++sent_;
  changed_.notify_all();
}

void Relay::End() {
  const std::lock_guard<std::mutex> lock(mutex_);
  ended_ = true;
  changed_.notify_all();
}

std::optional<std::string_view> Relay::Full() {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait(lock, [this] { return ended_ || back_ < sent_; });
  // Blocks sent before the end are still delivered.
  if (back_ == sent_) {
    return std::nullopt;
  }
  const std::size_t index = back_ % blocks_.size();
  return std::string_view(blocks_[index].Data(), sizes_[index]);
}

void Relay::GiveBack() {
  const std::lock_guard<std::mutex> lock(mutex_);
  ++back_;
  changed_.notify_all();
}

void Relay::GiveUp() {
  const std::lock_guard<std::mutex> lock(mutex_);
  givenUp_ = true;
  changed_.notify_all();
}

}  // namespace zephin::expander
