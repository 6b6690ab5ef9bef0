#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <optional>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/expander/common/resources.h"
#include "platform/expander/disk/output_file.h"
#include "platform/expander/plan/file_jobs.h"
#include "platform/expander/work/expansion.h"
#include "platform/expander/work/threads.h"
#include "platform/expander/zip/entry_stream.h"

namespace zephin::expander {
namespace {

constexpr std::size_t kBlock = 1U << 20U;

struct EndAtExit {
  Relay& relay;
  ~EndAtExit() { relay.End(); }
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

  void WriteAlone(Entry& entry);
  void WriteShared(Entry& entry);

 private:
  using Step = int (FileWriter::*)(const Entry&, EntryStream&, OutputFile&);

  void Write(Entry& entry, Step step);
  int WriteSmall(const Entry& entry, EntryStream& stream, OutputFile& file);
  int WriteBlocks(const Entry& entry, EntryStream& stream, OutputFile& file);
  int WriteThroughRelay(const Entry& entry, EntryStream& stream, OutputFile& file);
  int Create(const Entry& entry, OutputFile& file);
  // Gives -1 for a fault that was noted.
  int Refuse(const Entry& entry, const EntryStream& stream);
  // True while there is a point in going on with a large file.
  bool Wanted(const OutputFile& file);

  static constexpr int kNoted = -1;

  Site& site_;
  Unpacker unpacker_;
  FolderDescriptors descriptors_;
  Block buffer_;
};

void FileWriter::WriteAlone(Entry& entry) {
  Write(entry, &FileWriter::WriteBlocks);
}

void FileWriter::WriteShared(Entry& entry) {
  Write(entry, &FileWriter::WriteThroughRelay);
}

void FileWriter::Write(Entry& entry, Step step) {
  if (!site_.control.Proceed() || FolderLost(site_, entry)) {
    return;
  }
  OutputFile file;
  EntryStream stream(entry, unpacker_);
  int code = stream.Small() ? WriteSmall(entry, stream, file) : (this->*step)(entry, stream, file);
  if (code == 0) {
    code = file.Finish(entry.attributes);
  }
  entry.made = code == 0;
  if (code != 0 && file.Unfinished()) {
    ++site_.control.removed;
  }
  if (code > 0) {
    site_.faults.AddSystem(entry.order, entry.storedName, code);
    NoteLoss(site_);
  }
}

int FileWriter::Create(const Entry& entry, OutputFile& file) {
  const int folder = descriptors_.Get(entry.folder);
  if (folder < 0) {
    return errno;
  }
  const int code = file.Create(folder, entry.Leaf(), entry.attributes, site_.mask, site_.standing);
  if (code == 0) {
    site_.control.made.fetch_add(1, std::memory_order_relaxed);
  }
  return code;
}

int FileWriter::Refuse(const Entry& entry, const EntryStream& stream) {
  site_.faults.Add(entry.order, entry.storedName, stream.Fault());
  return kNoted;
}

/// The data are known to be right before there is a file.
int FileWriter::WriteSmall(const Entry& entry, EntryStream& stream, OutputFile& file) {
  const auto data = stream.Whole(buffer_.Data());
  if (!data) {
    return Refuse(entry, stream);
  }
  const int code = Create(entry, file);
  return code != 0 ? code : file.Write(data->data(), data->size());
}

int FileWriter::WriteBlocks(const Entry& entry, EntryStream& stream, OutputFile& file) {
  if (const int code = Create(entry, file); code != 0) {
    return code;
  }
  while (Wanted(file)) {
    const auto size = stream.Next(buffer_.Data(), buffer_.Size());
    if (!size) {
      return Refuse(entry, stream);
    }
    if (*size == 0) {
      return 0;
    }
    if (const int code = file.Write(buffer_.Data(), *size); code != 0) {
      return code;
    }
  }
  return kNoted;
}

int FileWriter::WriteThroughRelay(const Entry& entry, EntryStream& stream, OutputFile& file) {
  constexpr std::size_t kBlocks = 4;
  if (const int code = Create(entry, file); code != 0) {
    return code;
  }
  Relay relay(kBlocks, kBlock);
  int writeCode = 0;
  std::jthread writer([&] {
    while (const auto data = relay.Full()) {
      writeCode = file.Write(data->data(), data->size());
      if (writeCode != 0) {
        relay.GiveUp();
        return;
      }
      relay.GiveBack();
    }
  });
  // Also if the reading raises: the writer waits for it.
  const EndAtExit end{relay};
  std::optional<std::size_t> size = 0;
  bool ended = false;
  while (!ended && Wanted(file)) {
    char* block = relay.Free();
    if (block == nullptr) {
      break;
    }
    size = stream.Next(block, relay.BlockSize());
    ended = size.value_or(0) == 0;
    if (!ended) {
      relay.Send(*size);
    }
  }
  relay.End();
  writer.join();
  if (writeCode != 0) {
    return writeCode;
  }
  if (!size) {
    return Refuse(entry, stream);
  }
  return ended ? 0 : kNoted;
}

bool FileWriter::Wanted(const OutputFile& file) {
  // A file whose name is gone would only fill the disk.
  if (!file.StillThere()) {
    site_.control.Stop();
  }
  return site_.control.Proceed();
}

/// Takes jobs until there are none left.
void Work(Site& site, FileWriter& writer, const std::vector<FileJob>& jobs,
          std::atomic<std::size_t>& next) {
  for (std::size_t i = next++; i < jobs.size(); i = next++) {
    writer.SetEnd(site.plan.files[jobs[i].last - 1].limit);
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
  for (const std::size_t index : jobs.shared) {
    writer.SetEnd(site.plan.files[index].limit);
    writer.WriteShared(site.plan.files[index]);
  }
  if (jobs.jobs.size() == 1) {
    std::atomic<std::size_t> next = 0;
    Work(site, writer, jobs.jobs, next);
  } else if (!jobs.jobs.empty()) {
    WorkByTwo(site, writer, jobs.jobs);
  }
}

}  // namespace zephin::expander
