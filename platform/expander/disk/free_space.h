// Checks that an archive's contents fit on the disk before the first byte is written.
#ifndef PLATFORM_EXPANDER_DISK_FREE_SPACE_H_
#define PLATFORM_EXPANDER_DISK_FREE_SPACE_H_

#include <string>

#include "platform/expander/disk/output_file.h"
#include "platform/expander/plan/plan.h"

namespace zephin::expander {

/// Returns an empty text if the plan fits on the disk of the folder (an open descriptor), in bytes
/// and in the number of items, or if the disk doesn't report its space; else why not, with both
/// figures. Files in the folder that will be replaced count as free space.
std::string WhyNoRoom(const Plan& plan, int folder, Existing existing);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_DISK_FREE_SPACE_H_
