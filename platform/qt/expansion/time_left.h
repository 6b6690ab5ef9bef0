// Estimates how long an expansion will still take.
#ifndef PLATFORM_QT_EXPANSION_TIME_LEFT_H_
#define PLATFORM_QT_EXPANSION_TIME_LEFT_H_

#include <cstdint>
#include <deque>
#include <optional>

namespace zephin {

/// Uses the speed of the last seconds. Gives no estimate while it would be a guess: at the start,
/// while nothing moves, and while the last speed is far from that of the whole time.
class TimeLeft {
 public:
  /// Adds what is done after that many seconds. Times must not go back. `total` 0 means unknown.
  void Add(double seconds, std::uint64_t done, std::uint64_t total);
  /// In whole seconds, at least 1 and rounded up to what a user can follow: to 5 seconds, above a
  /// minute to minutes, above two hours to hours.
  std::optional<std::uint64_t> Seconds() const;

 private:
  struct Sample {
    double seconds;
    std::uint64_t done;
  };

  std::deque<Sample> samples_;
  std::optional<Sample> first_;
  std::uint64_t total_ = 0;
};

}  // namespace zephin

#endif  // PLATFORM_QT_EXPANSION_TIME_LEFT_H_
