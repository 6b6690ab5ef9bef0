#include "platform/framework/machine.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <vector>

#include "tests/platform/framework/variable.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

TEST(MachineFacts, TemporaryFolderIsPrivateToTheUser) {
  const std::string name = "zephin-" + std::to_string(geteuid());
  // The item at the usual name, and whether it is used nevertheless.
  const std::vector<std::pair<std::string, bool>> rows = {
      {"open folder", true}, {"link", false}, {"file", false}, {"another user's", geteuid() != 0}};
  for (const auto& [what, taken] : rows) {
    const ScratchFolder scratch;
    const fs::path place = scratch / "tmp" / name;
    WriteFile(scratch / "tmp/others", "");
    fs::create_symlink("tmp", scratch / "link");
    if (what == "link") {
      fs::create_symlink(".", place);
    } else if (what == "file") {
      WriteFile(place, "");
    } else {
      WriteFile(place / "kept", "");
      fs::permissions(place, fs::perms(0777));
    }
    if (what == "another user's") {
      EXPECT_TRUE(chown(place.c_str(), 65534, 65534) == 0 || geteuid() != 0);
    }
    const Variable base("TMPDIR", scratch / "link/");
    const fs::path folder = DetectMachine().temporaryFolder;
    EXPECT_EQ(folder.parent_path(), scratch / "tmp") << what;
    EXPECT_EQ(folder.filename(), taken ? name : name + "-2") << what;
    EXPECT_EQ(DetectMachine().temporaryFolder, folder) << what;
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all) << what;
    EXPECT_EQ(fs::exists(folder / "kept"), taken) << what;
  }
}

TEST(MachineFacts, DesktopFolderIsReadFromTheListOfUserFolders) {
  const ScratchFolder scratch;
  const std::string homePath = scratch.Path().string();
  // The contents of the list, and the desktop folder, where "~" is the home folder.
  const std::vector<std::pair<const char*, std::string>> rows = {
      {"# made\nXDG_DESKTOP_DIR=\"$HOME/Bureau\"\nXDG_MUSIC_DIR=\"$HOME/M\"\n", "~/Bureau"},
      {"  XDG_DESKTOP_DIR=\"/else/where/\"", "/else/where"},
      {"XDG_DESKTOP_DIR=\"$HOME/a \\\"b\\\" \\$c\"\r\n", "~/a \"b\" $c"},
      {"XDG_DESKTOP_DIR=\"$HOME/\"", "~"},
      {"XDG_DESKTOP_DIR=\"/a\"\nXDG_DESKTOP_DIR=\"/b\"", "/b"},
      {"XDG_DESKTOP_DIR=\"Desktop\"", "~/Desktop"},
      {"XDG_DESKTOP_DIR=\"", "~/Desktop"},
      {"#XDG_DESKTOP_DIR=\"/a\"", "~/Desktop"},
  };
  const Variable home("HOME", homePath + "/");
  const Variable temporary("TMPDIR", homePath);
  const Variable settings("XDG_CONFIG_HOME", scratch / "set");
  for (const auto& [list, expected] : rows) {
    WriteFile(scratch / "set/user-dirs.dirs", list);
    EXPECT_EQ(DetectMachine().desktopFolder,
              expected.front() == '~' ? homePath + expected.substr(1) : expected)
        << list;
  }
}

TEST(MachineFacts, VariablesWithRelativePathsAreIgnored) {
  const ScratchFolder scratch;
  const Variable temporary("TMPDIR", scratch.Path());
  const Variable settings("XDG_CONFIG_HOME", "relative");
  {
    const Variable home("HOME", scratch / "");
    EXPECT_EQ(DetectMachine().userHome, scratch.Path());
    EXPECT_EQ(DetectMachine().desktopFolder, scratch / "Desktop");
  }
  const Variable noHome("HOME", "relative");
  EXPECT_NE(DetectMachine().userHome, "relative");
}

}  // namespace
}  // namespace zephin::test
