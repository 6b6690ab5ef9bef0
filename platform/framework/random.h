#ifndef PLATFORM_FRAMEWORK_RANDOM_H_
#define PLATFORM_FRAMEWORK_RANDOM_H_

#include <cstdint>
#include <random>

namespace zephin {

/// A generator of random numbers, seeded by the system in each run. Its numbers are good enough for
/// names of temporary files, not for secrets.
class Random {
 public:
  Random() : engine_(std::random_device{}()) {}
  /// A uniformly distributed number from `least` to `greatest`, both included. `least` must not be
  /// greater than `greatest`.
  std::int64_t InRange(std::int64_t least, std::int64_t greatest) {
    return std::uniform_int_distribution<std::int64_t>(least, greatest)(engine_);
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_RANDOM_H_
