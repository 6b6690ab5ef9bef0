// Checks that an archive's contents fit on the disk before the first byte is written.
#ifndef PLATFORM_EXPANDER_DISK_FREE_SPACE_H_
#define PLATFORM_EXPANDER_DISK_FREE_SPACE_H_

#include <cstdint>
#include <optional>
#include <string>

#include "platform/expander/disk/output_file.h"
#include "platform/expander/plan/plan.h"
#include "platform/expander/report/reason.h"

namespace zephin::expander {

/// What a disk lacks.
struct Shortage {
  /// NoSpace: figures are in bytes. NoFileSlots: in files and folders.
  Reason reason = Reason::NoSpace;
  std::uint64_t needed = 0;
  std::uint64_t free = 0;

  /// Why the contents don't fit, with both figures.
  std::string Text() const;
};

/// Returns nothing if the plan fits on the disk of the folder (an open descriptor), in bytes and in
/// the number of items, or if the disk doesn't report its space. Files in the folder that will be
/// replaced count as free space.
std::optional<Shortage> FindShortage(const Plan& plan, int folder, Existing existing);

/// The free bytes on the disk of the folder; 0 if the disk doesn't report them.
std::uint64_t FreeBytes(int folder);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_DISK_FREE_SPACE_H_
