#include "tools/make_setup/publish.h"

#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "tools/make_setup/files.h"
#include "tools/make_setup/payload.h"
#include "tools/make_setup/setup_error.h"

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

std::vector<fs::path> ItemsIn(const fs::path& folder) {
  std::vector<fs::path> items;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    items.push_back(entry.path());
  }
  return items;
}

/// Renames, which are taken back when the object goes before `Keep`.
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
  // Desktops start an entry in the user's own folders only if it may be run.
  fs::permissions(path, fs::perms{0755});
}

void Publish(const fs::path& bundle, const fs::path& beside, const fs::path& output,
             const fs::path& replaced) {
  const fs::path parent = fs::absolute(output).parent_path();
  fs::create_directory(replaced);
  Moves moves;
  if (fs::exists(beside / "Data#End")) {
    for (const fs::path& item : ItemsIn(parent)) {
      if (IsPieceName(item.filename().string())) {
        moves.Move(item, replaced / item.filename());
      }
    }
  }
  for (const fs::path& item : ItemsIn(beside)) {
    const fs::path to = parent / item.filename();
    if (fs::is_directory(to)) {
      throw SetupError(to.string() + ": a folder stands in the place of a file");
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
