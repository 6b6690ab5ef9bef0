#ifndef PLATFORM_FRAMEWORK_RANDOM_H_
#define PLATFORM_FRAMEWORK_RANDOM_H_

#include <cstdint>
#include <random>

namespace zephin {

/// A generator of random numbers, seeded anew in each run.
class Random {
 public:
  Random() : engine_(std::random_device{}()) {}
  /// A uniform number from `least` to `greatest`, both included; `least` must not be the greater.
  std::int64_t InRange(std::int64_t least, std::int64_t greatest) {
    return std::uniform_int_distribution<std::int64_t>(least, greatest)(engine_);
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_RANDOM_H_
