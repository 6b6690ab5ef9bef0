// A file that is being written. It stands under its name from the start, and goes again unless it
// was finished: what is left under a name is always whole.
#ifndef PLATFORM_EXPANDER_DISK_OUTPUT_FILE_H_
#define PLATFORM_EXPANDER_DISK_OUTPUT_FILE_H_

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/expander/common/resources.h"
#include "platform/expander/zip/entry.h"

namespace zephin::expander {

/// What happens to a file or link that stands where one is to be made.
enum class Standing { Replace, Keep };

/// All calls give 0 or the system's error code.
class OutputFile {
 public:
  OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  /// Makes a new file in the folder, never through a link. EEXIST if something stands there that is
  /// kept, EISDIR for a folder. `mask` is the process's file creation mask.
  [[nodiscard]] int Create(int folder, std::string_view leaf, const Attributes& attributes,
                           mode_t mask, Standing standing);
  [[nodiscard]] int Write(const char* bytes, std::size_t size);
  /// Sets mode and time and closes the file, which stays from then on.
  [[nodiscard]] int Finish(const Attributes& attributes);
  /// It was made, and goes with this object.
  bool Unfinished() const { return descriptor_.IsOpen(); }
  /// False when its name was deleted.
  bool StillThere() const;

 private:
  int folder_ = -1;
  std::string leaf_;
  Descriptor descriptor_;
  bool changeMode_ = false;
};

/// Removes what stands at a name in a folder so that something can be made there: 0 if the name is
/// free then. EISDIR for a folder, which stays.
[[nodiscard]] int ClearName(int folder, const char* leaf);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_DISK_OUTPUT_FILE_H_
