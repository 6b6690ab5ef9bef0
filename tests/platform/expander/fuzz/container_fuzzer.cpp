// Gives any bytes to the reader of the container: the table of contents, the plan, the headers and
// the data of each entry, without a disk. Finds crashes, reads past an end, hangs, and sizes that
// are believed.
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/expander/plan/file_jobs.h"
#include "platform/expander/plan/plan.h"
#include "platform/expander/zip/central_directory.h"
#include "platform/expander/zip/entry_data.h"
#include "tests/fuzz/fuzzing.h"

namespace zephin::expander {
namespace {

using test::Require;

void ReadData(const Entry& entry, Unpacker& unpacker) {
  std::vector<char> block(kSmallEntry);
  unpacker.reader.SetEnd(entry.end);
  if (IsSmall(entry)) {
    std::string_view small;
    const Cause cause = ReadSmallEntry(entry, unpacker, block.data(), small);
    Require(cause || small.size() == entry.size);
    return;
  }
  EntryStream stream(entry, unpacker);
  std::uint64_t total = 0;
  for (auto size = stream.Next(block.data(), block.size()); size && *size > 0;
       size = stream.Next(block.data(), block.size())) {
    total += *size;
    Require(total <= entry.size);
  }
}

void ReadArchive(const std::uint8_t* bytes, std::size_t size) {
  Descriptor memory(::memfd_create("archive", MFD_CLOEXEC));
  Require(::write(memory.Number(), bytes, size) == static_cast<ssize_t>(size));
  ArchiveFile file;
  Require(file.Take(std::move(memory)) == 0);
  Faults faults;
  CentralDirectory directory;
  directory.Read(file, "archive", faults);
  const Plan plan = MakePlan(directory.entries, directory.Size(), 1000, faults);
  Require(plan.files.size() + plan.links.size() <= directory.entries.size());
  Unpacker unpacker(file);
  for (const Entry& entry : plan.files) {
    Require(entry.end <= size && !entry.path.empty() && entry.path.front() != '/');
    ReadData(entry, unpacker);
  }
  std::size_t shared = 0;
  const FileJobs jobs = ShareOut(plan.files);
  for (const FileJob& job : jobs.jobs) {
    shared += job.last - job.first;
  }
  Require(shared + jobs.shared.size() == plan.files.size());
  (void)OnlyTopItem(plan);
}

}  // namespace
}  // namespace zephin::expander

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  zephin::expander::ReadArchive(bytes, size);
  return 0;
}
