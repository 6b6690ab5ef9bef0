// A file that is being written. It is deleted unless it is kept. A large file gets its name only
// once it is whole: until then it has none, or on disks that have no unnamed files, a temporary
// name. So a killed process leaves no part of a large file under its name, and an old file of that
// name is replaced in one step.
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

/// How a file gets its name. A small file, whose data are checked and at hand, is made under its
/// name at once, which is faster: only a process that is killed between two calls leaves it
/// incomplete.
enum class Naming { AtOnce, WhenWhole };

/// What happens to a file or link that already exists where one is to be made.
enum class Existing { Replace, Keep };

/// What an expansion may replace.
struct Replacing {
  Existing existing = Existing::Replace;
  /// The files and links that this expansion has made. They are never replaced: if one has the name
  /// of another entry, the disk ignores a difference between the two names.
  FileIds made;
};

class OutputFile {
 public:
  /// Adds the file that it makes to `replacing`, which must exist longer than this object.
  explicit OutputFile(Replacing& replacing) : replacing_(replacing) {}
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  /// Makes a new file in the folder, an open descriptor that must stay open longer than this
  /// object. Never opens an existing file or a link. `mask` is the process's file creation mask.
  [[nodiscard]] Cause Create(int folder, std::string_view leaf, const Attributes& attributes,
                             mode_t mask, Naming naming);
  [[nodiscard]] Cause Write(const char* bytes, std::size_t size);
  /// Sets mode and time. Some disks don't store them, so a failure is no reason to delete the file.
  [[nodiscard]] Cause SetAttributes(const Attributes& attributes);
  /// Closes the file and gives it its name; it is kept from then on. On a failure it is deleted:
  /// data that the disk reports as lost only now.
  [[nodiscard]] Cause Keep();
  /// False if its name was deleted, or the folder if it has no name yet.
  bool StillThere() const;
  /// The identity of the file that was made; none before.
  const FileId& Id() const { return id_; }

 private:
  [[nodiscard]] Descriptor Open(const std::string& name, mode_t mode) const;
  [[nodiscard]] Cause CreateNamed(mode_t mode);
  [[nodiscard]] Cause CreateUnnamed(mode_t mode);
  [[nodiscard]] Cause GiveName();
  [[nodiscard]] Cause MoveToLeaf();

  int folder_ = -1;
  Replacing& replacing_;
  std::string leaf_;
  /// The file's name so far; empty if it has none.
  std::string name_;
  Descriptor descriptor_;
  FileId id_;
  bool changeMode_ = false;
};

/// Checks that the file or link of that name may be replaced. No cause if it may be, or if there is
/// none; EISDIR for a folder, EEXIST for what is kept.
[[nodiscard]] Cause CheckReplaceable(int folder, const char* leaf, const Replacing& replacing);

/// The same, and deletes the file or link.
[[nodiscard]] Cause ClearName(int folder, const char* leaf, const Replacing& replacing);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_DISK_OUTPUT_FILE_H_
