// A file that is being written. It has its final name from the start, and is deleted unless it is
// finished. A killed process leaves a file that is not whole.
#ifndef PLATFORM_EXPANDER_DISK_OUTPUT_FILE_H_
#define PLATFORM_EXPANDER_DISK_OUTPUT_FILE_H_

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/expander/common/faults.h"
#include "platform/expander/common/file_id.h"
#include "platform/expander/common/resources.h"
#include "platform/expander/zip/entry.h"

namespace zephin::expander {

constexpr const char* kModeNotSet = "its mode could not be set";
constexpr const char* kTimeNotSet = "its time could not be set";

/// What happens to a file or link that already exists where one is to be made.
enum class Existing { Replace, Keep };

class OutputFile {
 public:
  OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  /// Makes a new file in the folder, never through a link. EEXIST if something exists there that is
  /// kept, EISDIR for a folder. `mask` is the process's file creation mask.
  [[nodiscard]] Cause Create(int folder, std::string_view leaf, const Attributes& attributes,
                             mode_t mask, Existing existing);
  [[nodiscard]] Cause Write(const char* bytes, std::size_t size);
  /// Sets mode and time. Some disks don't store them, so a failure is no reason to delete the file.
  [[nodiscard]] Cause SetAttributes(const Attributes& attributes);
  /// Closes the file, which is kept from then on. On a failure its data may be lost, and it is
  /// deleted.
  [[nodiscard]] Cause Keep();
  /// False if its name was deleted.
  bool StillThere() const;
  /// The identity of the file that was made; none before.
  const FileId& Id() const { return id_; }

 private:
  int folder_ = -1;
  std::string leaf_;
  Descriptor descriptor_;
  FileId id_;
  bool changeMode_ = false;
};

/// Deletes the file or link of that name so that something can be made there. No cause if the name
/// is free then; EISDIR for a folder, which is kept.
[[nodiscard]] Cause ClearName(int folder, const char* leaf);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_DISK_OUTPUT_FILE_H_
