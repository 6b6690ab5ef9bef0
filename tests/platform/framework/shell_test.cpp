#include "platform/framework/shell.h"

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <vector>

#include "tests/platform/framework/on_disk.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

using Shells = OnDisk;

int StatusOf(const String& command) {
  Shell shell;
  shell.Execute(command);
  return shell.ErrorCode();
}

TEST_F(Shells, ReturnTheStatusOfTheCommand) {
  const std::vector<std::pair<const char*, int>> rows = {
      {"false; true", 0},
      {"kill -9 $$", 137},
      {"none-of-these", 127},
      {"test ! -t 0 && ! read x", 0},
      // No folder of helpers.
      {"ditto -xk a b", 127},
  };
  for (const auto& [command, status] : rows) {
    EXPECT_EQ(StatusOf(command), status) << command;
  }
  EXPECT_NE(StatusOf("echo 'no end"), 0);
  // A command is never run in part.
  EXPECT_EQ(StatusOf(Utf8(std::string("true\0x", 6))), 127);
}

TEST_F(Shells, StatusIsKnownEvenIfSigchldIsIgnored) {
  const auto before = std::signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(StatusOf("exit 3"), 3);
  EXPECT_EQ(std::signal(SIGCHLD, before), SIG_IGN) << "left as it was";
}

TEST_F(Shells, WaitForTheCommandButNotForItsBackgroundJobs) {
  mkfifo((base / "pipe").c_str(), 0600);
  // The background job keeps the standard descriptors open until the pipe is written.
  EXPECT_EQ(StatusOf("read x <" + At("pipe")->ShellPath() + " & exit 4"), 4);
  WriteFile(base / "pipe", "go on\n");
}

TEST_F(Shells, PassOnNoDescriptorsAndNoBlockedSignals) {
  const int leak = dup(STDERR_FILENO);
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  sigprocmask(SIG_BLOCK, &all, &before);
  const int status = StatusOf(Utf8("test ! -e /proc/$$/fd/" + std::to_string(leak) +
                                   " && grep -q '^SigBlk:.0*$' /proc/self/status"));
  sigprocmask(SIG_SETMASK, &before, nullptr);
  close(leak);
  EXPECT_EQ(status, 0);
}

TEST(ShellHelpers, DittoIsFoundInTheHelpersFolderWithAnyName) {
  const ScratchFolder scratch;
  const fs::path helpers = scratch / "a:b 'c\n$(d)";
  WriteFile(helpers / "ditto", "#!/bin/sh\nprintf '<%s>' \"$@\" >\"$2\"\nexit 5\n");
  fs::permissions(helpers / "ditto", fs::perms::owner_all);
  Machine machine;
  machine.helpersFolder = helpers;
  QuietDesktop desktop;
  const Application application(desktop, machine);
  const FolderItem out(scratch / "o ut");
  EXPECT_EQ(StatusOf("ditto -xk " + out.ShellPath() + " 'x  y'"), 5);
  EXPECT_EQ(ReadFile(scratch / "o ut"), "<-xk><" + out.NativePath().Bytes() + "><x  y>");
}

}  // namespace
}  // namespace zephin::test
