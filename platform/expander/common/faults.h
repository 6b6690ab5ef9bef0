// What went wrong in an expansion: how many faults, and the one that comes first in the archive's
// order, whichever thread met it first.
#ifndef PLATFORM_EXPANDER_COMMON_FAULTS_H_
#define PLATFORM_EXPANDER_COMMON_FAULTS_H_

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

namespace zephin::expander {

class Faults {
 public:
  /// For a fault of the archive as a whole, which is named before those of single entries.
  static constexpr std::uint32_t kWholeArchive = 0;

  /// Notes one fault. `order` is the entry's place in the archive, from 1; `name` may hold any
  /// bytes.
  void Add(std::uint32_t order, std::string_view name, std::string_view why);
  void AddSystem(std::uint32_t order, std::string_view name, int code);

  std::uint64_t Count() const;
  /// "NAME: why", or empty.
  std::string First() const;

 private:
  mutable std::mutex mutex_;
  std::uint64_t count_ = 0;
  std::uint32_t firstOrder_ = 0;
  std::string first_;
};

/// The name with everything that could break a line or a terminal written as "\x0a".
std::string OneLine(std::string_view name);

/// The system's words for an error code.
std::string SystemText(int code);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_COMMON_FAULTS_H_
