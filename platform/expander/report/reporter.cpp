#include "platform/expander/report/reporter.h"

#include <chrono>
#include <system_error>
#include <utility>

namespace zephin::expander {
namespace {

/// Most expansions end before, and a window that flashes up only disturbs.
constexpr std::chrono::milliseconds kSilence(1000);
constexpr std::chrono::milliseconds kInterval(200);

}  // namespace

Reporter::Reporter(Job job, const Report& report) : job_(std::move(job)), report_(report) {
  try {
    thread_ = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    // The work needs the threads that there are more than the user needs a bar.
  }
}

Reporter::~Reporter() {
  Stop();
}

void Reporter::Run() {
  std::unique_lock<std::mutex> lock(mutex_);
  const auto ended = [this] { return ended_; };
  if (changed_.wait_for(lock, kSilence, ended) || !Open()) {
    return;
  }
  do {
    window_.Offer(report_.Now());
  } while (!changed_.wait_for(lock, kInterval, ended));
}

bool Reporter::Open() {
  return window_.Start() && window_.Send(job_);
}

void Reporter::Stop() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    ended_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) {
    thread_.join();
  }
}

void Reporter::End(const std::string& placed, std::uint64_t expanded) {
  Stop();
  if (!job_.showsFailure || !report_.Failed()) {
    (void)window_.Send(Done());
    return;
  }
  if (!window_.IsOpen() && !Open()) {
    return;
  }
  for (const MissingEntry& entry : report_.MissingEntries()) {
    if (!window_.Send(entry)) {
      break;
    }
  }
  Failure failure = report_.Summary();
  failure.placed = placed;
  failure.expanded = expanded;
  (void)window_.Send(failure);
}

}  // namespace zephin::expander
