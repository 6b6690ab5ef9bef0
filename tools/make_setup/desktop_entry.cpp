#include "tools/make_setup/desktop_entry.h"

#include <string_view>

#include "tools/make_setup/files.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

// The bundle is found by the entry's own path, so that its name needs no quoting here: as %k from
// the desktop, and as $0 where a file manager (or a user) runs the file as a program. "%%" stands
// for "%" in an entry, and means the same to the shell where a desktop leaves it as it is.
constexpr std::string_view kHead =
    R"(#!/usr/bin/env -S sh -c 'exec "${0%.desktop}.app/Contents/MacOS/Setup"'
[Desktop Entry]
Type=Application
Version=1.0
)";
constexpr std::string_view kTail =
    R"(Comment=Opens the installer
Exec=sh -c "exec \\"\\${1%%.desktop}.app/Contents/MacOS/Setup\\"" sh %k
Icon=system-software-install
Terminal=false
StartupNotify=false
)";

/// A text as an entry's value: one line.
std::string AsValue(std::string_view text) {
  std::string value;
  for (const char character : text) {
    if (character == '\\') {
      value += R"(\\)";
    } else if (character == '\n') {
      value += R"(\n)";
    } else {
      value += character;
    }
  }
  return value;
}

}  // namespace

void WriteDesktopEntry(const std::string& name, const fs::path& folder) {
  const fs::path path = folder / (name + ".desktop");
  std::string entry(kHead);
  entry += "Name=" + AsValue(name) + "\n";
  entry += kTail;
  WriteFile(path, entry);
  // Desktops start an entry in the user's own folders only if it may be run.
  fs::permissions(path, fs::perms{0755});
}

}  // namespace zephin::make_setup
