#include "platform/expander/plan/file_jobs.h"

#include <algorithm>

namespace zephin::expander {
namespace {

constexpr std::uint64_t kLarge = 1U << 20U;
/// Below this size, passing blocks between threads costs more than it saves.
constexpr std::uint64_t kWorthSharing = 4U << 20U;

/// The time to make an empty file, as the number of bytes that are written in the same time.
constexpr std::uint64_t kCostOfFile = 32U << 10U;

void AddRuns(const std::vector<Entry>& files, std::vector<FileJob>& jobs) {
  constexpr std::size_t kMostFiles = 64;
  FileJob job;
  std::uint64_t bytes = 0;
  const auto flush = [&](std::size_t next) {
    if (job.first < job.last) {
      jobs.push_back(job);
    }
    job = FileJob{next, next};
    bytes = 0;
  };
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (files[i].size >= kLarge) {
      flush(i + 1);
      continue;
    }
    if (job.last > job.first &&
        (files[i].folder != files[job.first].folder || bytes + files[i].size > kLarge ||
         job.last - job.first >= kMostFiles)) {
      flush(i);
    }
    job.last = i + 1;
    bytes += files[i].size;
  }
  flush(files.size());
}

}  // namespace

FileJobs ShareOut(const std::vector<Entry>& files) {
  FileJobs result;
  std::vector<std::size_t> large;
  std::uint64_t cost = 0;
  for (std::size_t i = 0; i < files.size(); ++i) {
    // The sum can't overflow: archives that don't fit on the disk were refused before.
    cost += files[i].size + kCostOfFile;
    if (files[i].size >= kLarge) {
      large.push_back(i);
    }
  }
  std::sort(large.begin(), large.end(),
            [&](std::size_t a, std::size_t b) { return files[a].size > files[b].size; });
  // The largest first: what is shared no longer counts when the next one is compared with the rest.
  for (const std::size_t index : large) {
    const std::uint64_t own = files[index].size + kCostOfFile;
    if (own > kWorthSharing && own > cost / 2) {
      result.shared.push_back(index);
      cost -= own;
    } else {
      result.jobs.push_back({index, index + 1});
    }
  }
  AddRuns(files, result.jobs);
  return result;
}

}  // namespace zephin::expander
