// Looks whether an archive's files can fit on the disk at all, before the first byte is written.
#ifndef PLATFORM_EXPANDER_DISK_FREE_SPACE_H_
#define PLATFORM_EXPANDER_DISK_FREE_SPACE_H_

#include <string>

#include "platform/expander/disk/output_file.h"
#include "platform/expander/plan/plan.h"

namespace zephin::expander {

/// Empty if the plan's files fit on the disk of the folder (an open descriptor), in bytes and in
/// number, or if the disk doesn't tell; else why not, with both figures. What stands in the folder
/// and would be replaced counts as free.
std::string WhyNoRoom(const Plan& plan, int folder, Standing standing);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_DISK_FREE_SPACE_H_
