// How far an expansion is and what it has lost. The threads that expand write it, another thread
// reads it at the same time. It costs them one relaxed addition for each block of a file.
#ifndef PLATFORM_EXPANDER_REPORT_REPORT_H_
#define PLATFORM_EXPANDER_REPORT_REPORT_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/expander/report/message.h"

namespace zephin::expander {

class Report {
 public:
  /// The order of a fault of the archive as a whole.
  static constexpr std::uint32_t kWholeArchive = 0;
  /// Names that are kept for the list of missing entries. Others are counted only, so that an
  /// archive of a million entries and a full disk don't take all memory.
  static constexpr std::size_t kMostNames = 100'000;

  // For the expansion.

  /// The size of the whole work, once the plan is made.
  void SetWork(std::uint64_t bytes, std::uint64_t entries);
  void AddBytes(std::uint64_t count) { bytesDone_.fetch_add(count, std::memory_order_relaxed); }
  void AddEntry() { entriesDone_.fetch_add(1, std::memory_order_relaxed); }
  /// The name that is worked on. `name` must exist until ForgetName; null is allowed.
  void SetName(const std::string_view* name) { name_.store(name, std::memory_order_release); }
  void ForgetName();
  /// Adds an entry that is missing, or with kWholeArchive a fault of the whole archive.
  void AddFault(std::uint32_t order, Reason reason, std::string_view name, std::string_view detail);
  /// The contents need this much, in bytes for NoSpace, in files and folders for NoFileSlots.
  void SetSpace(std::uint64_t needed, std::uint64_t free);
  /// The user has taken the contents away: what is missing then is no failure.
  void SetTakenAway() { takenAway_.store(true, std::memory_order_relaxed); }

  // For the reader, at any time.

  Progress Now() const;

  // For the reader, once the expansion has ended.

  /// Whether the user must know of a failure: an entry is missing, and not because the contents or
  /// the archive were taken away.
  bool Failed() const;
  /// The missing entries in the archive's order, at most kMostNames of them.
  std::vector<MissingEntry> MissingEntries() const;
  /// The failure without what only the caller knows: `placed` and `expanded`.
  Failure Summary() const;

 private:
  struct Fault {
    std::uint32_t order;
    Reason reason;
    std::string name;
  };

  std::atomic<std::uint64_t> bytesDone_ = 0;
  std::atomic<std::uint64_t> bytesToDo_ = 0;
  std::atomic<std::uint64_t> entriesDone_ = 0;
  std::atomic<std::uint64_t> entriesToDo_ = 0;
  std::atomic<const std::string_view*> name_ = nullptr;
  std::atomic<bool> takenAway_ = false;

  /// Guards what follows, and keeps the name alive while it is read.
  mutable std::mutex mutex_;
  std::vector<Fault> entries_;
  std::vector<Fault> whole_;
  std::uint64_t missing_ = 0;
  std::uint64_t needed_ = 0;
  std::uint64_t free_ = 0;
  std::string detail_;
};

/// Forgets the report's name before the texts that it points into are destroyed. Is to be declared
/// after their owner.
class NameLease {
 public:
  explicit NameLease(Report& report) : report_(report) {}
  NameLease(const NameLease&) = delete;
  NameLease& operator=(const NameLease&) = delete;
  ~NameLease() { report_.ForgetName(); }

 private:
  Report& report_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_REPORT_REPORT_H_
