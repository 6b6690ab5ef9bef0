#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>

#include "platform/expander/disk/free_space.h"
#include "platform/expander/expander.h"
#include "platform/expander/steps/expansion.h"
#include "platform/expander/zip/central_directory.h"

namespace zephin::expander {
namespace {

/// Makes the folder and all folders above it. Existing files in the way fail when it is opened.
int ForceFolder(const std::string& path) {
  constexpr mode_t kPlainMode = 0777;
  for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
    const std::string part = path.substr(0, slash);
    if (!part.empty() && ::mkdir(part.c_str(), kPlainMode) != 0 && errno != EEXIST) {
      // mkdir of an existing folder can fail otherwise than with EEXIST, on a read-only disk for
      // instance.
      struct stat status {};
      const int code = errno;
      if (::stat(part.c_str(), &status) != 0) {
        return code;
      }
    }
    if (slash == std::string::npos) {
      return 0;
    }
  }
}

Descriptor OpenFolder(const std::string& path) {
  return Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

void Expand(const ArchiveFile& file, const std::string& archivePath, int folder,
            const std::string& folderPath, mode_t mask, Result& result, Faults& faults,
            Report& report) {
  CentralDirectory directory;
  const NameLease lease(report);
  directory.Read(file, archivePath, faults);
  Plan plan = MakePlan(directory.entries, directory.Size(), RoomBelow(folderPath), faults);
  if (const auto shortage = FindShortage(plan, folder, Existing::Replace)) {
    faults.Add(Faults::kWholeArchive, archivePath, shortage->Text(), shortage->reason);
    report.SetSpace(shortage->needed, shortage->free);
    return;
  }
  WorkControl control;
  Replacing replacing;
  Site site{file, plan, Root{folder, 0}, faults, control, replacing, report, mask};
  MakeFolders(site);
  WriteFiles(site);
  MakeLinks(site);
  FinishFolders(site);
  if (control.Stopped()) {
    faults.Add(Faults::kWholeArchive, folderPath, "was deleted or moved during the expansion",
               Reason::Gone);
  }
  FinishReport(site);
  result.expanded = CountExpanded(site);
}

}  // namespace

Result ExpandInto(const std::string& archivePath, const std::string& folderPath, Report& report) {
  Result result;
  Faults faults(report);
  const mode_t mask = CreationMask();
  // Callers rely on the folder even if the archive can't be read.
  const int made = ForceFolder(folderPath);
  const Descriptor folder = OpenFolder(folderPath);
  ArchiveFile file;
  if (made != 0 || !folder.IsOpen()) {
    faults.Add(Faults::kWholeArchive, folderPath, Cause::System(made != 0 ? made : errno));
  } else if (const int code = file.Open(archivePath); code != 0) {
    faults.Add(Faults::kWholeArchive, archivePath, Cause::System(code));
  } else {
    Expand(file, archivePath, folder.Number(), folderPath, mask, result, faults, report);
  }
  result.faults = faults.Count();
  result.firstFault = faults.First();
  return result;
}

}  // namespace zephin::expander
