// What failed in an expansion: the number of faults, and the first one in the archive's order,
// whichever thread met it first.
#ifndef PLATFORM_EXPANDER_COMMON_FAULTS_H_
#define PLATFORM_EXPANDER_COMMON_FAULTS_H_

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

namespace zephin::expander {

/// Why one thing failed: a fixed text of ours, an error code of the system, or both. False if
/// nothing failed.
class Cause {
 public:
  Cause() = default;
  /// `text` must live as long as the program; nil gives no cause.
  static Cause Fixed(const char* text) { return {text, 0}; }
  /// `code` as in errno; 0 gives no cause. `text` says what was being done, if that is not obvious.
  static Cause System(int code, const char* text = nullptr) {
    return {code != 0 ? text : nullptr, code};
  }

  explicit operator bool() const { return text_ != nullptr || code_ != 0; }
  /// 0 for a fixed text.
  int Code() const { return code_; }
  /// "TEXT: system's text", or one of them alone. Empty if there is no cause.
  std::string Text() const;

 private:
  Cause(const char* text, int code) : text_(text), code_(code) {}

  const char* text_ = nullptr;
  int code_ = 0;
};

/// Safe to use from several threads.
class Faults {
 public:
  /// The order of a fault of the archive as a whole, which is reported before those of entries.
  static constexpr std::uint32_t kWholeArchive = 0;

  /// Adds one fault. `order` is the entry's place in the archive, from 1. `name` may hold any
  /// bytes.
  void Add(std::uint32_t order, std::string_view name, std::string_view why);
  void Add(std::uint32_t order, std::string_view name, const Cause& cause);

  std::uint64_t Count() const;
  /// "NAME: why" on one line, or empty if there is no fault.
  std::string First() const;

 private:
  mutable std::mutex mutex_;
  std::uint64_t count_ = 0;
  std::uint32_t firstOrder_ = 0;
  std::string first_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_COMMON_FAULTS_H_
