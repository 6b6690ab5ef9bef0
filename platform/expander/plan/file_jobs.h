// How the files of an expansion are shared out between the threads.
#ifndef PLATFORM_EXPANDER_PLAN_FILE_JOBS_H_
#define PLATFORM_EXPANDER_PLAN_FILE_JOBS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/expander/zip/entry.h"

namespace zephin::expander {

/// Files that one thread writes one after the other: indexes `first` to `last` - 1.
struct FileJob {
  std::size_t first = 0;
  std::size_t last = 0;
};

struct FileJobs {
  /// Files that would keep one thread busy while the other has nothing left to do: both work on
  /// each of them, one unpacks and one writes.
  std::vector<std::size_t> shared;
  /// All others: large files alone, the largest first, then runs of small ones in the archive's
  /// order that lie in one folder, since two threads in one folder wait for each other.
  std::vector<FileJob> jobs;
};

FileJobs ShareOut(const std::vector<Entry>& files);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_PLAN_FILE_JOBS_H_
