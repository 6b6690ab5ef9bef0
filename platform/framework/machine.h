#ifndef PLATFORM_FRAMEWORK_MACHINE_H_
#define PLATFORM_FRAMEWORK_MACHINE_H_

#include <cstdint>
#include <optional>
#include <string>

namespace zephin {

/// What the program knows about the machine and its user. `main` fills it once and passes it to the
/// application; a test fills it as the case needs. All paths are absolute and have no trailing
/// slash. An empty path means that the place is unknown.
struct Machine {
  std::string executable;              ///< File of the running program.
  std::string systemFolder;            ///< `SpecialFolder::System`, beside `applicationsFolder`.
  std::string applicationsFolder;      ///< `SpecialFolder::Applications`; it need not exist yet.
  std::string userHome;                ///< The user's home folder.
  std::string desktopFolder;           ///< The user's desktop folder; it need not exist.
  std::string temporaryFolder;         ///< A private folder of the user; it exists.
  std::string helpersFolder;           ///< Holds `ditto` and the expander of ".zip" files.
  std::optional<std::int64_t> memory;  ///< "ramm": physical memory in units of 1,000,000 bytes.
  std::optional<std::int64_t> systemMajor;  ///< "sys1".
  std::optional<std::int64_t> systemMinor;  ///< "sys2".
};

/// The machine that this process runs on. Makes the temporary folder (mode 0700) if necessary. If
/// its usual name belongs to another user, a second name is used, the same for all processes of the
/// user; if that is taken as well, a random one. Defined in processes/machine_linux.cpp.
Machine DetectMachine();

/// Queries of the system by selector.
namespace System {
/// Stores the value for `selector` ("ramm", "sys1", "sys2") in `value` and returns true. Returns
/// false and leaves `value` unchanged if the selector has no value. Defined in
/// processes/machine.cpp.
bool Gestalt(const char* selector, std::int64_t& value);
}  // namespace System

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_MACHINE_H_
