#include "platform/qt/expansion/time_left.h"

#include <algorithm>
#include <cmath>

namespace zephin {
namespace {

// In seconds.
constexpr double kLookBack = 8;
constexpr double kLeastTime = 2;
constexpr double kLongestPause = 3;
constexpr double kMinute = 60;
constexpr double kHour = 3600;
constexpr double kMost = 100 * kHour;

constexpr double kLeastShare = 0.02;
/// How far the last speed may be from the speed of the whole time, either way.
constexpr double kTrust = 2.5;

std::uint64_t RoundedUp(double seconds, double step) {
  return static_cast<std::uint64_t>(std::max(1.0, std::ceil(seconds / step)) * step);
}

}  // namespace

void TimeLeft::Add(double seconds, std::uint64_t done, std::uint64_t total) {
  total_ = total;
  const Sample sample{seconds, done};
  if (!first_) {
    first_ = sample;
  }
  // Of a pause only the beginning and the end are of interest.
  if (samples_.size() > 1 && samples_.back().done == done &&
      samples_[samples_.size() - 2].done == done) {
    samples_.pop_back();
  }
  samples_.push_back(sample);
  while (samples_.size() > 2 && samples_[1].seconds <= seconds - kLookBack) {
    samples_.pop_front();
  }
}

std::optional<std::uint64_t> TimeLeft::Seconds() const {
  if (!first_ || samples_.size() < 2) {
    return std::nullopt;
  }
  const Sample& last = samples_.back();
  const Sample& begin = samples_.front();
  const Sample& before = samples_[samples_.size() - 2];
  const double whole = last.seconds - first_->seconds;
  const double recent = last.seconds - begin.seconds;
  const bool pauses = before.done == last.done && last.seconds - before.seconds > kLongestPause;
  if (whole < kLeastTime || pauses || recent <= 0 || last.done <= begin.done ||
      last.done >= total_ ||
      static_cast<double>(last.done) < kLeastShare * static_cast<double>(total_)) {
    return std::nullopt;
  }
  const double speed = static_cast<double>(last.done - begin.done) / recent;
  const double usual = static_cast<double>(last.done - first_->done) / whole;
  const double left = static_cast<double>(total_ - last.done) / speed;
  if (speed > usual * kTrust || usual > speed * kTrust || left > kMost) {
    return std::nullopt;
  }
  if (left <= kMinute) {
    constexpr double kStep = 5;
    return RoundedUp(left, kStep);
  }
  return RoundedUp(left, left <= 2 * kHour ? kMinute : kHour);
}

}  // namespace zephin
