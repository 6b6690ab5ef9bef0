#include "platform/expander/report/report.h"

#include <algorithm>
#include <array>

namespace zephin::expander {
namespace {

constexpr std::size_t kReasons = static_cast<std::size_t>(kLastReason) + 1;

}  // namespace

void Report::SetWork(std::uint64_t bytes, std::uint64_t entries) {
  bytesToDo_.store(bytes, std::memory_order_relaxed);
  entriesToDo_.store(entries, std::memory_order_relaxed);
}

void Report::ForgetName() {
  const std::lock_guard<std::mutex> lock(mutex_);
  name_.store(nullptr, std::memory_order_relaxed);
}

void Report::AddFault(std::uint32_t order, Reason reason, std::string_view name,
                      std::string_view detail) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (reason == Reason::Other && detail_.empty()) {
    detail_ = detail;
  }
  if (order == kWholeArchive) {
    whole_.push_back({order, reason, std::string(name)});
    return;
  }
  ++missing_;
  if (entries_.size() < kMostNames) {
    entries_.push_back({order, reason, std::string(name)});
  }
}

void Report::SetSpace(std::uint64_t needed, std::uint64_t free) {
  const std::lock_guard<std::mutex> lock(mutex_);
  needed_ = needed;
  free_ = free;
}

Progress Report::Now() const {
  Progress progress;
  progress.bytesDone = bytesDone_.load(std::memory_order_relaxed);
  progress.bytesToDo = bytesToDo_.load(std::memory_order_relaxed);
  progress.entriesDone = entriesDone_.load(std::memory_order_relaxed);
  progress.entriesToDo = entriesToDo_.load(std::memory_order_relaxed);
  const std::lock_guard<std::mutex> lock(mutex_);
  progress.missing = missing_;
  if (const std::string_view* name = name_.load(std::memory_order_acquire)) {
    progress.name = *name;
  }
  return progress;
}

bool Report::Failed() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto counts = [](const Fault& fault) { return fault.reason != Reason::Gone; };
  return !takenAway_.load(std::memory_order_relaxed) &&
         (std::any_of(whole_.begin(), whole_.end(), counts) ||
          std::any_of(entries_.begin(), entries_.end(), counts));
}

std::vector<MissingEntry> Report::MissingEntries() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  std::vector<const Fault*> sorted;
  sorted.reserve(entries_.size());
  for (const Fault& fault : entries_) {
    sorted.push_back(&fault);
  }
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const Fault* a, const Fault* b) { return a->order < b->order; });
  std::vector<MissingEntry> missing;
  missing.reserve(sorted.size());
  for (const Fault* fault : sorted) {
    missing.push_back({fault->reason, fault->name});
  }
  return missing;
}

Failure Report::Summary() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  Failure failure;
  failure.needed = needed_;
  failure.free = free_;
  failure.detail = detail_;
  failure.missing = missing_;
  if (!whole_.empty()) {
    failure.reason = whole_.front().reason;
    return failure;
  }
  std::array<std::uint64_t, kReasons> counts{};
  for (const Fault& fault : entries_) {
    ++counts[static_cast<std::size_t>(fault.reason)];
  }
  failure.reason =
      static_cast<Reason>(std::max_element(counts.begin(), counts.end()) - counts.begin());
  return failure;
}

}  // namespace zephin::expander
