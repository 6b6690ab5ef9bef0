#ifndef PLATFORM_FRAMEWORK_MACHINE_H_
#define PLATFORM_FRAMEWORK_MACHINE_H_

#include <cstdint>
#include <optional>
#include <string>

namespace zephin {

/// What the program knows of the machine and the user that it runs for. `main` fills it once and
/// hands it to the application; a test says with it what machine it is. All paths are absolute,
/// without a trailing slash, links resolved where the system would resolve them.
struct Machine {
  std::string executable;              ///< The running program's file. Empty: unknown.
  std::string systemFolder;            ///< `SpecialFolder.System`; "Applications" is its sibling.
  std::string userHome;                ///< The user's home folder.
  std::string desktopFolder;           ///< The user's desktop folder.
  std::string temporaryFolder;         ///< A folder of the user's own, made already.
  std::string helpersFolder;           ///< Holds `ditto` and the expander. Empty: none.
  std::optional<std::int64_t> memory;  ///< "ramm": physical memory in units of 1,000,000 bytes.
  std::optional<std::int64_t> systemMajor;  ///< "sys1"; nothing if the query fails.
  std::optional<std::int64_t> systemMinor;  ///< "sys2".
};

/// The machine that this process runs on. Makes the temporary folder (mode 0700) if need be. If its
/// usual name belongs to somebody else, it has a second name that is the same for all processes of
/// the user; if that is taken, too, a random one. What can't be found out stays empty.
Machine DetectMachine();

/// Answers of the system by selector.
namespace System {
/// True if `selector` ("ramm", "sys1", "sys2") has a value, which goes to `value`; else `value`
/// stays as it is.
bool Gestalt(const char* selector, std::int64_t& value);
}  // namespace System

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_MACHINE_H_
