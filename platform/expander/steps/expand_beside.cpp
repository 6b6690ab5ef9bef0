#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>

#include "platform/expander/disk/free_space.h"
#include "platform/expander/expander.h"
#include "platform/expander/steps/expansion.h"
#include "platform/expander/steps/root_watch.h"
#include "platform/expander/zip/central_directory.h"

namespace zephin::expander {
namespace {

/// The number of names that are tried.
constexpr int kMostNames = 10'000;

struct ArchivePath {
  explicit ArchivePath(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    name = path.substr(slash + 1);
  }

  std::string folder;
  std::string name;
};

bool EndsInZip(std::string_view name) {
  if (name.size() < 4) {
    return false;
  }
  std::string end(name.substr(name.size() - 4));
  // Not tolower, which depends on the locale.
  std::transform(end.begin(), end.end(), end.begin(), [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  });
  return end == ".zip";
}

enum class ItemKind { File, Folder };

/// "Name" for 1, "Name 2" for 2. Extensions are kept: "page 2.html", "Tool 2.app".
std::string NumberedName(const std::string& name, int number, ItemKind kind) {
  if (number == 1) {
    return name;
  }
  const std::size_t dot = name.rfind('.');
  const bool hasEnding =
      dot != std::string::npos && dot > 0 && (kind == ItemKind::File || name.substr(dot) == ".app");
  const std::size_t stem = hasEnding ? dot : name.size();
  return name.substr(0, stem) + " " + std::to_string(number) + name.substr(stem);
}

/// One expansion beside an archive that is already open.
class Placement {
 public:
  Placement(const ArchiveFile& file, const std::string& archivePath, mode_t mask, Faults& faults,
            Report& report)
      : file_(file),
        archivePath_(archivePath),
        beside_(archivePath),
        mask_(mask),
        faults_(faults),
        report_(report) {}

  void Run(Result& result);

 private:
  void PlaceFolder(std::uint32_t folder, const std::string& wanted, Result& result);
  void PlaceFile(Entry& entry, Result& result);
  // Makes a new folder under the first free name and stores the name. Not open on a fault, which is
  // added.
  Descriptor NewFolder(const std::string& wanted, std::string& name);
  // `watch` is nil if the contents have no folder of their own.
  void RunSteps(Site& site, RootWatch* watch, Result& result);
  void Fail(int code) { faults_.Add(Faults::kWholeArchive, archivePath_, Cause::System(code)); }

  const ArchiveFile& file_;
  const std::string& archivePath_;
  ArchivePath beside_;
  mode_t mask_;
  Faults& faults_;
  Report& report_;
  Descriptor parent_;
  Plan plan_;
  Replacing replacing_{Existing::Keep, {}};
};

void Placement::Run(Result& result) {
  parent_ = Descriptor(::open(beside_.folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!parent_.IsOpen()) {
    Fail(errno);
    return;
  }
  CentralDirectory directory;
  const NameLease lease(report_);
  directory.Read(file_, archivePath_, faults_);
  const std::string ownName = NameOfContents(archivePath_);
  // Room for the archive's own name too, and for a number behind a name.
  const std::size_t room = RoomBelow(beside_.folder);
  const std::size_t aside = ownName.size() + 8;
  plan_ = MakePlan(directory.entries, directory.Size(), room - std::min(room, aside), faults_);
  if (plan_.folders.size() == 1 && plan_.files.empty() && plan_.links.empty()) {
    return;
  }
  if (const auto shortage = FindShortage(plan_, parent_.Number(), Existing::Keep)) {
    faults_.Add(Faults::kWholeArchive, archivePath_, shortage->Text(), shortage->reason);
    report_.SetSpace(shortage->needed, shortage->free);
    return;
  }
  // A copy: placing a file changes its path.
  const std::string only(OnlyTopItem(plan_));
  if (only.empty()) {
    PlaceFolder(0, ownName, result);
  } else if (plan_.folders.size() > 1) {
    // The first folder after the root contains everything else.
    PlaceFolder(1, only, result);
  } else {
    PlaceFile(plan_.files.empty() ? plan_.links.front() : plan_.files.front(), result);
  }
}

Descriptor Placement::NewFolder(const std::string& wanted, std::string& name) {
  constexpr mode_t kPlainMode = 0777;
  int code = EEXIST;
  for (int number = 1; code == EEXIST && number <= kMostNames; ++number) {
    name = NumberedName(wanted, number, ItemKind::Folder);
    // Making the folder is the only safe way to ask whether the name is free.
    code = ::mkdirat(parent_.Number(), name.c_str(), kPlainMode) == 0 ? 0 : errno;
  }
  Descriptor folder;
  if (code == 0) {
    folder = Descriptor(
        ::openat(parent_.Number(), name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    code = folder.IsOpen() ? 0 : errno;
  }
  if (code != 0) {
    faults_.Add(Faults::kWholeArchive, wanted, Cause::System(code));
  }
  return folder;
}

void Placement::PlaceFolder(std::uint32_t folder, const std::string& wanted, Result& result) {
  const Descriptor root = NewFolder(wanted, result.placedAs);
  if (!root.IsOpen()) {
    result.placedAs.clear();
    return;
  }
  WorkControl control;
  Site site{file_,   plan_, Root{root.Number(), folder}, faults_, control, replacing_,
            report_, mask_};
  RootWatch watch(parent_.Number(), result.placedAs, root.Number(), control);
  RunSteps(site, &watch, result);
  if (watch.End() == RootState::Vanishing) {
    // The deletion missed what was made in a folder after it had listed it.
    RemoveRemains(site);
    RemoveIfSame(parent_.Number(), result.placedAs.c_str(), FileId::Of(root.Number()),
                 AT_REMOVEDIR);
  }
}

void Placement::PlaceFile(Entry& entry, Result& result) {
  const std::string wanted(entry.path);
  struct stat status {};
  int number = 1;
  // A file can't take its name in advance. If someone else takes it meanwhile, that is a fault.
  do {
    result.placedAs = NumberedName(wanted, number, ItemKind::File);
  } while (::fstatat(parent_.Number(), result.placedAs.c_str(), &status, AT_SYMLINK_NOFOLLOW) ==
               0 &&
           ++number <= kMostNames);
  entry.path = result.placedAs;
  WorkControl control;
  Site site{file_, plan_, Root{parent_.Number(), 0}, faults_, control, replacing_, report_, mask_};
  RunSteps(site, nullptr, result);
  if (result.expanded == 0) {
    result.placedAs.clear();
  }
}

void Placement::RunSteps(Site& site, RootWatch* watch, Result& result) {
  MakeFolders(site);
  WriteFiles(site);
  MakeLinks(site);
  FinishFolders(site);
  if (watch != nullptr) {
    // Before the root is finished: deleting the watch's marker changes its time.
    (void)watch->End();
  }
  FinishRoot(site);
  if (site.control.Stopped()) {
    faults_.Add(Faults::kWholeArchive, result.placedAs, "was deleted or moved during the expansion",
                Reason::Gone);
  }
  FinishReport(site);
  result.expanded = CountExpanded(site);
}

}  // namespace

std::string NameOfContents(const std::string& archivePath) {
  const std::string name = ArchivePath(archivePath).name;
  const std::string stem = EndsInZip(name) ? name.substr(0, name.size() - 4) : name;
  return stem.empty() ? "Archive" : stem;
}

Result ExpandBeside(const std::string& archivePath, Report& report, int open) {
  Result result;
  Faults faults(report);
  ArchiveFile file;
  // Opened first: the archive may be deleted at any time.
  const bool taken = open >= 0 && file.Take(Descriptor(::fcntl(open, F_DUPFD_CLOEXEC, 0))) == 0;
  if (const int code = taken ? 0 : file.Open(archivePath); code != 0) {
    faults.Add(Faults::kWholeArchive, archivePath, Cause::System(code));
  } else {
    Placement(file, archivePath, CreationMask(), faults, report).Run(result);
  }
  result.faults = faults.Count();
  result.firstFault = faults.First();
  return result;
}

}  // namespace zephin::expander
