// One expansion, step by step: folders, files by two threads, then links, then what is set on the
// folders. Links come after all files so that no file can be written through one; the folders'
// modes and times come last because work in them would fail or change them.
#ifndef PLATFORM_EXPANDER_WORK_EXPANSION_H_
#define PLATFORM_EXPANDER_WORK_EXPANSION_H_

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/expander/common/faults.h"
#include "platform/expander/disk/folder_descriptors.h"
#include "platform/expander/disk/output_file.h"
#include "platform/expander/plan/plan.h"
#include "platform/expander/work/threads.h"
#include "platform/expander/zip/archive_file.h"

namespace zephin::expander {

/// What all steps of an expansion work on; owned by whoever runs it.
struct Site {
  const ArchiveFile& file;
  Plan& plan;
  Root root;
  Faults& faults;
  WorkControl& control;
  Standing standing = Standing::Replace;
  /// The process's file creation mask.
  mode_t mask = 0;
};

/// The steps in their order. Each leaves out what lies in a folder that isn't there, with a fault
/// for every entry, and ends early when the site's control says so.
void MakeFolders(Site& site);
void WriteFiles(Site& site);
void MakeLinks(Site& site);
void FinishFolders(Site& site);

/// Takes away again what the steps made and is still there, folders only if they are empty then.
void RemoveRemains(Site& site);

/// Entries that stand on disk whole, once all steps are done.
std::uint64_t CountExpanded(const Site& site);

/// True, and the entry's fault is noted, if its folder isn't there.
bool FolderLost(Site& site, const Entry& entry);

/// To be called when something was not found that was there before: ends the work if the root
/// folder itself has been deleted.
void NoteLoss(Site& site);

/// Bytes that a path below the folder may have, so that the whole is a path that other programs can
/// name; 0 if there is no room.
std::size_t RoomBelow(const std::string& folderPath);

/// The process's file creation mask; for a moment it is another one.
mode_t CreationMask();

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_WORK_EXPANSION_H_
