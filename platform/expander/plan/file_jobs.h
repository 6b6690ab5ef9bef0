// Which thread writes which files of an expansion.
#ifndef PLATFORM_EXPANDER_PLAN_FILE_JOBS_H_
#define PLATFORM_EXPANDER_PLAN_FILE_JOBS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/expander/zip/entry.h"

namespace zephin::expander {

/// Files that one thread writes one after the other: indexes `first` to `last` - 1 in Plan::files.
struct FileJob {
  std::size_t first = 0;
  std::size_t last = 0;
};

struct FileJobs {
  /// Files so large that one thread alone would still be busy when the other one has finished all
  /// other files. Both threads work on each of them: one unpacks and one writes.
  std::vector<std::size_t> shared;
  /// All others: large files alone, the largest first, then runs of small ones in the order of
  /// their data. A run has one folder only, since two threads that make files in one folder wait
  /// for each other.
  std::vector<FileJob> jobs;
};

/// Divides the files; each is in exactly one place of the result.
FileJobs ShareOut(const std::vector<Entry>& files);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_PLAN_FILE_JOBS_H_
