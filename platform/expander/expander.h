// The zip expander: writes the contents of an archive into a folder or beside the archive. An
// archive can't write outside of the target folder, and every entry that is not on disk whole is
// reported. It doesn't make or list archives. ExpandInto is defined in steps/expand_into.cpp,
// ExpandBeside in steps/expand_beside.cpp.
#ifndef PLATFORM_EXPANDER_EXPANDER_H_
#define PLATFORM_EXPANDER_EXPANDER_H_

#include <cstdint>
#include <string>

#include "platform/expander/report/report.h"

namespace zephin::expander {

/// The result of an expansion.
struct Result {
  /// Number of entries that are on disk whole: files, links, and folders with an entry of their
  /// own.
  std::uint64_t expanded = 0;
  /// Number of entries that were refused or failed, and of faults of the archive as a whole.
  std::uint64_t faults = 0;
  /// The first of them in the archive's order: "NAME: why", one line without a line feed whatever
  /// bytes the name has. Empty if there is none.
  std::string firstFault;
  /// For an expansion beside the archive the name (not the path) of the item that it made. Empty if
  /// nothing was made, and for an expansion into a folder.
  std::string placedAs;

  /// True if every byte of every entry is on disk, except for companion files of a Mac's archive,
  /// which are ignored.
  bool Complete() const { return faults == 0; }
  /// The message for standard error, without a line feed: the first fault and the number of others.
  /// Empty if there is none.
  std::string Line() const {
    return faults > 1 ? firstFault + " (and " + std::to_string(faults - 1) + " more)" : firstFault;
  }
};

/// Both functions change the process's file creation mask for a moment at their start, use two
/// threads, and must not run at the same time. Paths are bytes for the system; relative ones start
/// at the working folder. The only exceptions are std::bad_alloc and std::system_error (a thread
/// could not be started). Another thread may read `report` meanwhile.

/// Expands the archive's contents into the folder, which is made with all folders above it before
/// the archive is read. Existing folders are kept; files and links of the same name are replaced.
/// An entry that fails leaves nothing of its own, but a file of its name may have been deleted.
[[nodiscard]] Result ExpandInto(const std::string& archivePath, const std::string& folderPath,
                                Report& report);

/// Expands beside the archive: one top-level item under its own name, several into a new folder
/// named after the archive; as "Name 2", "Name 3", ... if the name exists. Nothing that exists is
/// changed. The archive is opened once at the start and may be deleted from then on. A caller may
/// give it as a descriptor that is open for reading, in `open`; then it may be deleted already. The
/// path is opened if `open` is -1 or no plain file. Ends early with a fault if the folder that it
/// made is deleted or moved; it is not made again.
[[nodiscard]] Result ExpandBeside(const std::string& archivePath, Report& report, int open = -1);

/// Both for callers that show no progress.
[[nodiscard]] inline Result ExpandInto(const std::string& archivePath,
                                       const std::string& folderPath) {
  Report report;
  return ExpandInto(archivePath, folderPath, report);
}
[[nodiscard]] inline Result ExpandBeside(const std::string& archivePath) {
  Report report;
  return ExpandBeside(archivePath, report);
}

/// The name of the new folder, if it is free: the archive's name without ".zip".
std::string NameOfContents(const std::string& archivePath);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_EXPANDER_H_
