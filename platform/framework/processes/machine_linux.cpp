#include "platform/framework/machine.h"

#include <pwd.h>
#include <sys/stat.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

#include "platform/framework/files/system_paths.h"

namespace zephin {
namespace {

constexpr std::uint64_t kMemoryUnit = 1'000'000;
/// The compatibility level that setups find here: the version of the system that they are written
/// for and whose services this framework provides.
constexpr std::int64_t kSystemMajor = 10;
constexpr std::int64_t kSystemMinor = 15;

/// The folder `Helpers` next to the executable's folder; empty if it does not exist.
std::string HelpersBeside(const std::filesystem::path& executable) {
  const std::filesystem::path folder = executable.parent_path().parent_path() / "Helpers";
  std::error_code failure;
  return std::filesystem::is_directory(folder, failure) ? folder.string() : "";
}

std::optional<std::int64_t> PhysicalMemory() {
  struct sysinfo information {};
  if (sysinfo(&information) != 0) {
    return std::nullopt;
  }
  const std::uint64_t bytes = std::uint64_t{information.totalram} * information.mem_unit;
  return static_cast<std::int64_t>(bytes / kMemoryUnit);
}

/// The value of an environment variable if it is the absolute path of a folder; else empty.
std::string FolderInVariable(const char* name) {
  const char* value = std::getenv(name);
  std::error_code failure;
  if (value == nullptr || value[0] != '/' || !std::filesystem::is_directory(value, failure)) {
    return {};
  }
  return WithoutTrailingSlashes(value);
}

/// Makes `path` a private folder of this user. False if another item or another user's folder
/// exists there.
bool MakeOwnFolder(const std::string& path) {
  if (mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
    return false;
  }
  // In a folder that all users can write to, another user may have made the item, for example a
  // link that would redirect this user's files.
  struct stat state {};
  if (lstat(path.c_str(), &state) != 0 || !S_ISDIR(state.st_mode) || state.st_uid != geteuid()) {
    return false;
  }
  return chmod(path.c_str(), S_IRWXU) == 0;
}

std::string OwnFolderIn(const std::string& base) {
  std::string path = PathInFolder(base, "zephin-" + std::to_string(geteuid()));
  // All processes of a user must use the same folder: the copy of a split setup recognises itself
  // by it. So a second fixed name is tried before a random one.
  if (!MakeOwnFolder(path) && !MakeOwnFolder(path += "-2")) {
    path.append("-").append(6, 'X');  // mkdtemp replaces each X.
    if (mkdtemp(path.data()) == nullptr) {
      return {};
    }
  }
  std::error_code failure;
  const std::filesystem::path resolved = std::filesystem::canonical(path, failure);
  return failure ? "" : resolved.string();
}

/// The user's home folder: `$HOME` if it is the absolute path of a folder, else from the user
/// database.
std::string HomeFolder() {
  std::string home = FolderInVariable("HOME");
  std::array<char, 16384> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  if (home.empty() && getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
      found != nullptr) {
    home = WithoutTrailingSlashes(entry.pw_dir);
  }
  return home;
}

/// The value of XDG_DESKTOP_DIR in a list of user folders; empty if it is missing or not absolute.
/// One line of the list is `XDG_DESKTOP_DIR="$HOME/Bureau"`: in double quotes a path that is
/// absolute or begins with `$HOME`; a backslash precedes special characters.
std::string DesktopFolderInList(const std::string& list, const std::string& home) {
  constexpr std::string_view kKey = "XDG_DESKTOP_DIR=\"";
  constexpr std::string_view kHome = "$HOME";
  std::istringstream lines(list);
  std::string folder;
  // Other programs let a shell read the list, so that the last line counts.
  for (std::string line; std::getline(lines, line);) {
    line.erase(0, line.find_first_not_of(" \t"));
    if (!line.starts_with(kKey)) {
      continue;
    }
    std::string value;
    std::size_t i = kKey.size();
    const bool belowHome = line.compare(i, kHome.size(), kHome) == 0;
    if (belowHome) {
      value = home;
      i += kHome.size();
    }
    for (; i < line.size() && line[i] != '"'; ++i) {
      if (line[i] == '\\' && i + 1 < line.size()) {
        ++i;
      }
      value += line[i];
    }
    if (value.starts_with('/')) {
      folder = WithoutTrailingSlashes(value);
    }
  }
  return folder;
}

/// The desktop folder of the user's list of folders, else `Desktop` in the home folder.
std::string DesktopFolder(const std::string& home) {
  const char* configured = std::getenv("XDG_CONFIG_HOME");
  const std::string settings =
      configured != nullptr && configured[0] == '/' ? configured : PathInFolder(home, ".config");
  std::ostringstream list;
  list << std::ifstream(PathInFolder(settings, "user-dirs.dirs")).rdbuf();
  const std::string folder = DesktopFolderInList(list.str(), home);
  return folder.empty() ? PathInFolder(home, "Desktop") : folder;
}

/// The folder for applications. `/Applications` exists where an administrator has made it. Without
/// it, root uses the usual folder for software that is no package of the system, and all other
/// users get a folder in their home folder.
std::string ApplicationsFolder(const std::string& home) {
  constexpr const char* kShared = "/Applications";
  std::error_code failure;
  if (std::filesystem::is_directory(kShared, failure)) {
    return kShared;
  }
  if (geteuid() == 0) {
    return "/opt";
  }
  return home.empty() ? kShared : PathInFolder(home, "Applications");
}

/// A private folder (mode 0700) in $TMPDIR or /tmp; empty if none can be made.
std::string TemporaryFolder() {
  const std::string folder = FolderInVariable("TMPDIR");
  std::string own = folder.empty() ? "" : OwnFolderIn(folder);
  return own.empty() ? OwnFolderIn("/tmp") : own;
}

}  // namespace

Machine DetectMachine() {
  std::error_code failure;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", failure);
  Machine machine;
  machine.executable = executable.string();
  machine.userHome = HomeFolder();
  machine.applicationsFolder = ApplicationsFolder(machine.userHome);
  machine.systemFolder = PathInFolder(FolderOfPath(machine.applicationsFolder), "System");
  if (!machine.userHome.empty()) {
    machine.desktopFolder = DesktopFolder(machine.userHome);
  }
  machine.temporaryFolder = TemporaryFolder();
  machine.helpersFolder = executable.empty() ? "" : HelpersBeside(executable);
  machine.memory = PhysicalMemory();
  machine.systemMajor = kSystemMajor;
  machine.systemMinor = kSystemMinor;
  return machine;
}

}  // namespace zephin
