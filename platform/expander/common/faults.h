// What failed in an expansion: the number of faults, and the first one in the archive's order,
// whichever thread met it first.
#ifndef PLATFORM_EXPANDER_COMMON_FAULTS_H_
#define PLATFORM_EXPANDER_COMMON_FAULTS_H_

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/expander/report/reason.h"

namespace zephin::expander {

class Report;

/// Why one thing failed: a fixed text of ours, an error code of the system, or both. False if
/// nothing failed.
class Cause {
 public:
  Cause() = default;
  /// `text` must live as long as the program; nil gives no cause. `reason` is for the user.
  static Cause Fixed(const char* text, Reason reason = Reason::Damaged) {
    return {text, 0, reason};
  }
  /// `code` as in errno; 0 gives no cause. `text` says what was being done, if that is not obvious.
  static Cause System(int code, const char* text = nullptr) {
    return {code != 0 ? text : nullptr, code, ReasonOf(code)};
  }

  explicit operator bool() const { return text_ != nullptr || code_ != 0; }
  /// 0 for a fixed text.
  int Code() const { return code_; }
  Reason ForUser() const { return reason_; }
  /// Only a mode or time could not be set: the item itself is there.
  bool KeepsItem() const { return text_ != nullptr && code_ != 0; }
  /// "TEXT: system's text", or one of them alone. Empty if there is no cause.
  std::string Text() const;

 private:
  Cause(const char* text, int code, Reason reason) : text_(text), code_(code), reason_(reason) {}

  const char* text_ = nullptr;
  int code_ = 0;
  Reason reason_ = Reason::Other;
};

/// Safe to use from several threads.
class Faults {
 public:
  /// The order of a fault of the archive as a whole, which is reported before those of entries.
  static constexpr std::uint32_t kWholeArchive = 0;

  Faults() = default;
  /// Faults are added to the report too, which must outlive this object.
  explicit Faults(Report& report) : report_(&report) {}

  /// Adds one fault. `order` is the entry's place in the archive, from 1. `name` may hold any
  /// bytes.
  void Add(std::uint32_t order, std::string_view name, std::string_view why, Reason reason);
  void Add(std::uint32_t order, std::string_view name, const Cause& cause);

  std::uint64_t Count() const;
  /// "NAME: why" on one line, or empty if there is no fault.
  std::string First() const;

 private:
  void Count(std::uint32_t order, std::string_view name, std::string_view why);

  Report* report_ = nullptr;
  mutable std::mutex mutex_;
  std::uint64_t count_ = 0;
  std::uint32_t firstOrder_ = 0;
  std::string first_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_COMMON_FAULTS_H_
