#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/limits.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using Number = std::optional<std::int64_t>;

/// Whether a machine meets the two keywords, with these messages if it doesn't.
bool Meets(Number memory, Number major, Number minor, const std::string& system,
           const std::string& ram, const std::vector<std::string>& messages) {
  StubRun run;
  run.machine.memory = memory;
  run.machine.systemMajor = major;
  run.machine.systemMinor = minor;
  run.BareWindow().fMinOS = Utf8(system);
  run.BareWindow().fMinRAM = Utf8(ram);
  for (const std::string& message : messages) {
    run.desktop.ExpectMessage(message + " is required.");
  }
  return run.BareWindow().CheckMinOSorRAM();
}

TEST(RequirementGates, EachKeywordRefusesSmallerValues) {
  for (std::int64_t least = 7; least <= 13; ++least) {
    const std::string name = "10." + std::to_string(least);
    const std::string word = (least == 8 ? "macos" : "MacOS") + name;
    const std::string message = "Mac OS X " + name + " or later";
    EXPECT_TRUE(Meets(0, 9, least, word, "", {})) << word;
    EXPECT_FALSE(Meets(0, 11, least - 1, word, "64GB", {message})) << word;
    EXPECT_FALSE(Meets(0, std::nullopt, 15, word, "", {message})) << word;
  }
  for (const auto& [word, least, name] : {std::tuple{"250MB", 250, "250 MB"},
                                          {"500mb", 500, "500 MB"},
                                          {"1GB", 1000, "1 GB"},
                                          {"2GB", 2000, "2 GB"},
                                          {"4GB", 4000, "4 GB"},
                                          {"8GB", 8000, "8 GB"},
                                          {"16GB", 16000, "16 GB"},
                                          {"32GB", 32000, "32 GB"}}) {
    const std::string message = std::string(name) + " RAM";
    EXPECT_TRUE(Meets(least, 10, 6, "MacOS10.14", word, {})) << word;
    EXPECT_FALSE(Meets(least - 1, 10, 6, "", word, {message})) << word;
    EXPECT_FALSE(
        Meets(std::nullopt, 10, 6, "MacOS10.7", word, {"Mac OS X 10.7 or later", message}));
  }
}

TEST(RequirementGates, ProbeLeavesTheUsersFileBehindALinkOfItsName) {
  StubRun run;
  WriteFile(run.Home() / "users", "precious");
  for (const bool hard : {false, true}) {
    const fs::path probe = run.Applications() / "X.txt";
    hard ? fs::create_hard_link(run.Home() / "users", probe)
         : fs::create_symlink(run.Home() / "users", probe);
    EXPECT_TRUE(run.BareWindow().CheckAdminAccount());
    EXPECT_EQ(ReadFile(run.Home() / "users"), "precious") << hard;
    EXPECT_TRUE(fs::is_empty(run.Applications()));
  }
}

constexpr const char* kRefusal =
    "Cannot Install\n\nAn Administrator account is required to run this installer.";

TEST(RequirementGates, MissingApplicationsFolderIsMadeForAllUsers) {
  StubRun run;
  fs::remove(run.Applications());
  const mode_t mask = umask(077);
  EXPECT_TRUE(run.BareWindow().CheckAdminAccount());
  umask(mask);
  EXPECT_EQ(fs::status(run.Applications()).permissions(), fs::perms(0755));
  EXPECT_TRUE(fs::is_empty(run.Applications()));
  // If it can't be created, the user is refused, and nothing is written beside it.
  fs::remove(run.Applications());
  WriteFile(run.Applications(), "a file");
  run.desktop.ExpectMessage(kRefusal);
  EXPECT_FALSE(run.BareWindow().CheckAdminAccount());
  EXPECT_EQ(ReadFile(run.Applications()), "a file");
  EXPECT_FALSE(fs::exists(run.scratch / "ApplicationsX.txt"));
}

TEST(RequirementGates, UserWhoCanWriteToApplicationsIsAnAdministrator) {
  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  WriteFile(run.Applications() / "X.txt", "left over");
  EXPECT_TRUE(window.CheckAdminAccount());
  EXPECT_TRUE(fs::is_empty(run.Applications()));
  fs::permissions(run.Applications(), fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  run.desktop.ExpectMessage(kRefusal);
  EXPECT_FALSE(window.CheckAdminAccount());
}

}  // namespace
}  // namespace zephin::test
