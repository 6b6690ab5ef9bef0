#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/expander/common/resources.h"
#include "platform/expander/disk/output_file.h"
#include "platform/expander/plan/file_jobs.h"
#include "platform/expander/report/report.h"
#include "platform/expander/steps/expansion.h"
#include "platform/expander/steps/threads.h"
#include "platform/expander/zip/entry_data.h"

namespace zephin::expander {
namespace {

/// A small entry fits into one block.
constexpr std::size_t kBlock = 1U << 20U;

struct EndAtExit {
  Relay& relay;
  ~EndAtExit() { relay.End(); }
};

/// How the writing of one file ended.
struct Outcome {
  enum class Kind { Written, Stopped, Failed };

  static Outcome From(const Cause& cause) { return {cause ? Kind::Failed : Kind::Written, cause}; }

  Kind kind = Kind::Written;
  /// Set if it failed.
  Cause cause;
};

/// One thread's tools, and the way of one file from the archive to the disk.
class FileWriter {
 public:
  explicit FileWriter(Site& site)
      : site_(site),
        unpacker_(site.file),
        descriptors_(site.plan.folders, site.root),
        buffer_(kBlock) {}

  void SetEnd(std::uint64_t end) { unpacker_.reader.SetEnd(end); }

  void WriteAlone(Entry& entry) { Write(entry, &FileWriter::WriteBlocks); }
  void WriteShared(Entry& entry) { Write(entry, &FileWriter::WriteThroughRelay); }

 private:
  using Step = Outcome (FileWriter::*)(const Entry&, OutputFile&);

  void Write(Entry& entry, Step writeLarge);
  Outcome WriteSmall(const Entry& entry, OutputFile& file);
  Outcome WriteBlocks(const Entry& entry, OutputFile& file);
  Outcome WriteThroughRelay(const Entry& entry, OutputFile& file);
  Cause Create(const Entry& entry, OutputFile& file, Naming naming);
  // Whether a large file must be completed: Written until something is known to prevent it.
  Outcome Check(const OutputFile& file) const;

  Site& site_;
  Unpacker unpacker_;
  FolderDescriptors descriptors_;
  Block buffer_;
};

/// A fault of one file doesn't end the work on the others.
void FileWriter::Write(Entry& entry, Step writeLarge) {
  if (site_.control.Stopped() || FolderLost(site_, entry)) {
    return;
  }
  site_.report.SetName(&entry.storedName);
  OutputFile file(site_.replacing);
  Outcome outcome = IsSmall(entry) ? WriteSmall(entry, file) : (this->*writeLarge)(entry, file);
  Cause attributes;
  if (outcome.kind == Outcome::Kind::Written) {
    attributes = file.SetAttributes(entry.attributes);
    outcome = Outcome::From(file.Keep());
  }
  entry.made = outcome.kind == Outcome::Kind::Written;
  entry.id = file.Id();
  site_.report.AddEntry();
  if (outcome.kind == Outcome::Kind::Failed) {
    site_.faults.Add(entry.order, entry.storedName, outcome.cause);
    NoteLoss(site_);
  } else if (attributes) {
    site_.faults.Add(entry.order, entry.storedName, attributes);
  }
}

Cause FileWriter::Create(const Entry& entry, OutputFile& file, Naming naming) {
  const int folder = descriptors_.Get(entry.folder);
  if (folder < 0) {
    return Cause::System(errno);
  }
  return file.Create(folder, entry.Leaf(), entry.attributes, site_.mask, naming);
}

/// Makes the file only after its data have been checked.
Outcome FileWriter::WriteSmall(const Entry& entry, OutputFile& file) {
  std::string_view data;
  Cause cause = ReadSmallEntry(entry, unpacker_, buffer_.Data(), data);
  if (!cause) {
    cause = Create(entry, file, Naming::AtOnce);
  }
  if (!cause) {
    cause = file.Write(data.data(), data.size());
    site_.report.AddBytes(data.size());
  }
  return Outcome::From(cause);
}

Outcome FileWriter::WriteBlocks(const Entry& entry, OutputFile& file) {
  EntryStream stream(entry, unpacker_);
  if (const Cause cause = Create(entry, file, Naming::WhenWhole)) {
    return Outcome::From(cause);
  }
  Outcome outcome = Check(file);
  while (outcome.kind == Outcome::Kind::Written) {
    const auto size = stream.Next(buffer_.Data(), buffer_.Size());
    if (size.value_or(0) == 0) {
      return Outcome::From(stream.Fault());
    }
    if (const Cause cause = file.Write(buffer_.Data(), *size)) {
      return Outcome::From(cause);
    }
    site_.report.AddBytes(*size);
    outcome = Check(file);
  }
  return outcome;
}

Outcome FileWriter::WriteThroughRelay(const Entry& entry, OutputFile& file) {
  // A few blocks even out the pace of the two threads; on average the faster one waits anyway.
  constexpr std::size_t kBlocks = 4;
  EntryStream stream(entry, unpacker_);
  if (const Cause cause = Create(entry, file, Naming::WhenWhole)) {
    return Outcome::From(cause);
  }
  Relay relay(kBlocks, kBlock);
  Cause writeCause;
  std::jthread writer([&] {
    while (const auto data = relay.Full()) {
      writeCause = file.Write(data->data(), data->size());
      if (writeCause) {
        relay.GiveUp();
        return;
      }
      site_.report.AddBytes(data->size());
      relay.GiveBack();
    }
  });
  // An exception of the reading must end the writer too, which waits for the relay.
  const EndAtExit end{relay};
  Outcome outcome;
  for (bool ended = false; !ended && outcome.kind == Outcome::Kind::Written;) {
    char* block = relay.Free();
    if (block == nullptr) {
      break;
    }
    const std::size_t size = stream.Next(block, relay.BlockSize()).value_or(0);
    ended = size == 0;
    if (!ended) {
      relay.Send(size);
    }
    outcome = ended ? Outcome::From(stream.Fault()) : Check(file);
  }
  relay.End();
  writer.join();
  return writeCause ? Outcome::From(writeCause) : outcome;
}

Outcome FileWriter::Check(const OutputFile& file) const {
  // More data of a file whose name was deleted would only fill the disk.
  if (!file.StillThere()) {
    return Outcome::From(Cause::System(ENOENT));
  }
  return {site_.control.Stopped() ? Outcome::Kind::Stopped : Outcome::Kind::Written, {}};
}

/// Does jobs until there are none left.
void Work(Site& site, FileWriter& writer, const std::vector<FileJob>& jobs,
          std::atomic<std::size_t>& next) {
  for (std::size_t i = next++; i < jobs.size(); i = next++) {
    writer.SetEnd(site.plan.files[jobs[i].last - 1].end);
    for (std::size_t k = jobs[i].first; k < jobs[i].last; ++k) {
      writer.WriteAlone(site.plan.files[k]);
    }
  }
}

void WorkByTwo(Site& site, FileWriter& writer, const std::vector<FileJob>& jobs) {
  std::atomic<std::size_t> next = 0;
  std::exception_ptr trouble;
  std::thread second([&] {
    try {
      FileWriter other(site);
      Work(site, other, jobs, next);
    } catch (...) {
      trouble = std::current_exception();
    }
  });
  try {
    Work(site, writer, jobs, next);
  } catch (...) {
    // The other thread uses this one's objects.
    second.join();
    throw;
  }
  second.join();
  if (trouble) {
    std::rethrow_exception(trouble);
  }
}

}  // namespace

void WriteFiles(Site& site) {
  const FileJobs jobs = ShareOut(site.plan.files);
  if (site.plan.files.empty()) {
    return;
  }
  FileWriter writer(site);
  // Before all others, since both threads are needed for them.
  for (const std::size_t index : jobs.shared) {
    writer.SetEnd(site.plan.files[index].end);
    writer.WriteShared(site.plan.files[index]);
  }
  // Starting a thread for a single job would cost more than it saves.
  if (jobs.jobs.size() == 1) {
    std::atomic<std::size_t> next = 0;
    Work(site, writer, jobs.jobs, next);
  } else if (!jobs.jobs.empty()) {
    WorkByTwo(site, writer, jobs.jobs);
  }
}

}  // namespace zephin::expander
