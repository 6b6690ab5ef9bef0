// The steps of an expansion: folders, files (with two threads), links, attributes of folders. Links
// come after all files, so that no file can be written through one. The folders' modes and times
// come last: a read-only mode would make work in the folder fail, and work would change the time.
// WriteFiles is defined in write_files.cpp.
#ifndef PLATFORM_EXPANDER_STEPS_EXPANSION_H_
#define PLATFORM_EXPANDER_STEPS_EXPANSION_H_

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/expander/common/faults.h"
#include "platform/expander/disk/folder_descriptors.h"
#include "platform/expander/disk/output_file.h"
#include "platform/expander/plan/plan.h"
#include "platform/expander/steps/threads.h"
#include "platform/expander/zip/archive_file.h"

namespace zephin::expander {

class Report;

/// What all steps work on. The caller owns what it refers to.
struct Site {
  const ArchiveFile& file;
  Plan& plan;
  Root root;
  Faults& faults;
  WorkControl& control;
  Replacing& replacing;
  Report& report;
  /// The process's file creation mask.
  mode_t mask = 0;
};

/// The steps in their order. Each adds a fault for every entry that it can't make, also for those
/// whose folder is missing, and continues with the next one. It returns early if the work is
/// stopped.
void MakeFolders(Site& site);
void WriteFiles(Site& site);
void MakeLinks(Site& site);
void FinishFolders(Site& site);  ///< All folders but the root.
void FinishRoot(Site& site);

/// Deletes the files, links and empty folders that the steps made, as far as they still are the
/// same items under the same names. What someone else has put in their place is kept.
void RemoveRemains(Site& site);

/// Completes the site's report, after all steps.
void FinishReport(Site& site);

/// The number of entries that are on disk whole, after all steps.
std::uint64_t CountExpanded(const Site& site);

/// True if the entry's folder is missing; then the fault has been added.
bool FolderLost(Site& site, const Entry& entry);

/// Stops the work if the root folder itself has been deleted. For use after a failure.
void NoteLoss(Site& site);

/// The most bytes that a path relative to the folder may have, so that other programs can open the
/// absolute path; 0 if even the folder's own path is too long.
std::size_t RoomBelow(const std::string& folderPath);

/// The process's file creation mask. Changes it for a moment, since it can't be read otherwise.
mode_t CreationMask();

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_STEPS_EXPANSION_H_
