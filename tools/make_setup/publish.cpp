#include "tools/make_setup/publish.h"

#include <cstdint>
#include <sstream>
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

// The entry finds the bundle by its own path, so that both can be moved and renamed. A shell runs
// the entry itself: to it the first lines are a comment, an unknown command and assignments, up to
// the command behind the ";" in `Keywords`, which must come before any text of the publisher.
// `Exec` would need quotes and backslashes for that, which desktops pass on in different ways.
//
// %k is the path of the entry as one word. LXDE's file managers pass the path of its folder
// instead, and as it is, which is one word only in quotes. So `find` gets both forms: it takes an
// entry or its folder, picks the file with this entry's mark, starts it, and leaves out the rest.
constexpr std::string_view kHead =
    R"(#!/bin/sh
[Desktop Entry]
Type=Application
Version=1.0
Keywords=installer;exec "${0%.desktop}.app/Contents/MacOS/Setup";
)";
constexpr std::string_view kExec =
    R"(Comment=Opens the installer
Exec=find %k "%k" -maxdepth 1 -name "*.desktop" -exec grep -q )";
constexpr std::string_view kTail =
    R"( {} ";" -exec sh {} ";" -quit
Icon=system-software-install
Terminal=false
StartupNotify=false
StartupWMClass=Setup
)";

/// A word that the entries of other installers in the same folder do not have.
std::string MarkOf(std::string_view name) {
  // FNV-1a: the same word each time that an installer of this name is made.
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char character : name) {
    hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3U;
  }
  std::ostringstream mark;
  mark << "setup-" << std::hex << hash;
  return mark.str();
}

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
  entry += kExec;
  entry += MarkOf(name);
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
