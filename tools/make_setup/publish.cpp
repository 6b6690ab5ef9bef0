#include "tools/make_setup/publish.h"

#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "setup/bundle_files.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/payload.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

// The entry finds the bundle by its own path, so the bundle's name needs no quoting here. The path
// is %k if the desktop starts the entry, and $0 if a file manager or a user runs the file as a
// program. "%%" means "%" in an entry; a desktop that leaves it as it is gives the shell an equal
// pattern.
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

/// A text as the value of a key in an entry, which is one line.
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

std::vector<fs::path> ItemsIn(const fs::path& folder) {
  std::vector<fs::path> items;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    items.push_back(entry.path());
  }
  return items;
}

/// Renames items. The destructor takes all renames back unless `Keep` was called.
class Moves {
 public:
  Moves() = default;
  ~Moves() {
    std::error_code ignored;
    for (; !done_.empty(); done_.pop_back()) {
      fs::rename(done_.back().second, done_.back().first, ignored);
    }
  }
  Moves(const Moves&) = delete;
  Moves& operator=(const Moves&) = delete;

  void Move(const fs::path& from, const fs::path& to) {
    fs::rename(from, to);
    done_.emplace_back(from, to);
  }
  void Keep() { done_.clear(); }

 private:
  std::vector<std::pair<fs::path, fs::path>> done_;
};

}  // namespace

void WriteDesktopEntry(const std::string& name, const fs::path& folder) {
  const fs::path path = folder / (name + ".desktop");
  std::string entry(kHead);
  entry += "Name=" + AsValue(name) + "\n";
  entry += kTail;
  WriteFile(path, entry);
  // Desktops start an entry in a user's folders only if it is executable.
  fs::permissions(path, fs::perms{0755});
}

void Publish(const fs::path& bundle, const fs::path& beside, const fs::path& output,
             const fs::path& replaced) {
  const fs::path parent = fs::absolute(output).parent_path();
  fs::create_directory(replaced);
  Moves moves;
  // The installer counts the pieces by their names, so one more from an earlier setup would be
  // read.
  if (fs::exists(beside / kLastPieceFile)) {
    for (const fs::path& item : ItemsIn(parent)) {
      if (IsPieceName(item.filename().string())) {
        moves.Move(item, replaced / item.filename());
      }
    }
  }
  for (const fs::path& item : ItemsIn(beside)) {
    const fs::path to = parent / item.filename();
    if (fs::is_directory(to)) {
      throw SetupError(to.string() + ": must not be a folder: a file is written there");
    }
    if (fs::exists(fs::symlink_status(to))) {
      moves.Move(to, replaced / item.filename());
    }
    moves.Move(item, to);
  }
  if (fs::exists(fs::symlink_status(output))) {
    moves.Move(output, replaced / "bundle");
  }
  moves.Move(bundle, output);
  moves.Keep();
}

}  // namespace zephin::make_setup
