#include "platform/framework/launcher.h"

#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/framework/files/file_descriptor.h"
#include "platform/framework/files/system_paths.h"

namespace zephin {
namespace {

constexpr std::size_t kBytesLookedAt = 4096;
constexpr std::size_t kLongestInfo = std::size_t{1} << 20U;

/// Whether the path has this extension, ignoring letter case, and a name before it.
bool EndsWith(const std::string& path, std::string_view ending) {
  return path.size() > ending.size() &&
         strcasecmp(path.c_str() + path.size() - ending.size(), ending.data()) == 0;
}

/// The first bytes of a file; empty if it cannot be read.
std::string Beginning(const std::string& path, std::size_t count) {
  struct stat state {};
  const FileDescriptor file = OpenPlainFile(SystemPath(path), O_RDONLY, state);
  std::string bytes(count, '\0');
  const ssize_t got = file.IsOpen() ? read(file.Number(), bytes.data(), bytes.size()) : 0;
  bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
  return bytes;
}

bool IsExecutableFile(const std::string& path) {
  struct stat state {};
  return stat(SystemPath(path), &state) == 0 && S_ISREG(state.st_mode) &&
         faccessat(AT_FDCWD, SystemPath(path), X_OK, AT_EACCESS) == 0;
}

/// Whether the name has no extension, or one of scripts. A leading dot begins no extension.
bool NameOfScript(const std::string& path) {
  const std::size_t dot = path.find('.', path.rfind('/') + 2);
  constexpr std::array<std::string_view, 3> kEndings{".sh", ".command", ".run"};
  return dot == std::string::npos ||
         std::any_of(kEndings.begin(), kEndings.end(),
                     [&path](std::string_view ending) { return EndsWith(path, ending); });
}

/// The command for an executable file; empty if it is a document.
std::vector<std::string> CommandOfExecutable(const std::string& path) {
  const std::string head = Beginning(path, kBytesLookedAt);
  const bool marked = head.starts_with("#!") || head.starts_with(
                                                    "\x7f"
                                                    "ELF");
  // A file that may be executed but not read can only be a program.
  if (marked || access(SystemPath(path), R_OK) != 0) {
    return {path};
  }
  if (!NameOfScript(path)) {
    return {};
  }
  // The kernel does not start a text without "#!", but a shell does. Other bytes are left to the
  // kernel, which may know their format.
  const bool text = head.find('\0') == std::string::npos;
  return text ? std::vector<std::string>{"/bin/sh", path} : std::vector<std::string>{path};
}

/// The value of `<key>CFBundleExecutable</key><string>...</string>`; empty if it is missing or
/// would lead out of the folder.
std::string ExecutableNameIn(const std::string& info) {
  constexpr std::string_view kKey = "<key>CFBundleExecutable</key>";
  constexpr std::string_view kOpen = "<string>";
  std::size_t start = info.find(kKey);
  if (start == std::string::npos) {
    return {};
  }
  start = info.find_first_not_of(" \t\r\n", start + kKey.size());
  if (start == std::string::npos || info.compare(start, kOpen.size(), kOpen) != 0) {
    return {};
  }
  start += kOpen.size();
  const std::size_t end = info.find("</string>", start);
  const std::string name = end == std::string::npos ? "" : info.substr(start, end - start);
  return name.find('/') == std::string::npos ? name : "";
}

/// The program of a bundle; empty if there is none, or several without one that Info.plist names.
std::string ProgramOfBundle(const std::string& bundle) {
  const std::string folder = bundle + "/Contents/MacOS";
  const std::string name =
      ExecutableNameIn(Beginning(bundle + "/Contents/Info.plist", kLongestInfo));
  if (!name.empty() && IsExecutableFile(PathInFolder(folder, name))) {
    return PathInFolder(folder, name);
  }
  std::vector<std::string> programs;
  for (const std::string& entry : NamesInFolder(SystemPath(folder))) {
    if (IsExecutableFile(PathInFolder(folder, entry))) {
      programs.push_back(PathInFolder(folder, entry));
    }
  }
  return programs.size() == 1 ? programs.front() : "";
}

}  // namespace

Command CommandToOpen(const std::string& path, const std::string& helpersFolder) {
  struct stat state {};
  if (stat(SystemPath(path), &state) != 0) {
    return {};
  }
  if (S_ISREG(state.st_mode) && EndsWith(path, ".zip") && !helpersFolder.empty()) {
    return {{PathInFolder(helpersFolder, "expand_beside"), "--open", path}, path};
  }
  std::vector<std::string> command;
  if (S_ISDIR(state.st_mode) && EndsWith(path, ".app")) {
    const std::string program = ProgramOfBundle(path);
    if (!program.empty()) {
      command = CommandOfExecutable(program);
    }
  } else if (IsExecutableFile(path)) {
    command = CommandOfExecutable(path);
  }
  return {command.empty() ? std::vector<std::string>{"xdg-open", path} : command, ""};
}

}  // namespace zephin
