#include <sys/sysinfo.h>

#include <filesystem>
#include <system_error>

#include "platform/framework/machine.h"
#include "platform/framework/processes/user_folders_linux.h"

namespace zephin {
namespace {

constexpr std::uint64_t kMemoryUnit = 1'000'000;
/// The system that setups are written for, as far as what runs here offers the same.
constexpr std::int64_t kSystemMajor = 10;
constexpr std::int64_t kSystemMinor = 15;

/// The folder `Helpers` beside the executable's own; empty if there is none.
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

}  // namespace

Machine DetectMachine() {
  std::error_code failure;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", failure);
  Machine machine;
  machine.executable = executable.string();
  machine.systemFolder = "/System";
  machine.userHome = HomeFolder();
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
