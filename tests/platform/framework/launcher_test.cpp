#include "platform/framework/launcher.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <vector>

#include "tests/platform/framework/variable.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class Launcher : public testing::Test {
 protected:
  void MakeProgram(const std::string& name, const std::string& content = "#!/bin/sh\n") const {
    WriteFile(scratch / name, content);
    fs::permissions(scratch / name, fs::perms(0777));
  }

  const ScratchFolder scratch;
};

TEST_F(Launcher, OpensEachKindAsADoubleClickWould) {
  const std::string info = "<dict><key>CFBundleExecutable</key>\n\t<string>main</string></dict>";
  WriteFile(scratch / "a.zip", "");
  WriteFile(scratch / "B.ZIP", "");
  WriteFile(scratch / "c.zip/in", "");
  MakeProgram("script.txt");
  MakeProgram("binary", std::string("\x7f"
                                    "ELF\0",
                                    5));
  MakeProgram("plain", "echo\n");
  MakeProgram("run.command", "echo\n");
  MakeProgram("data", std::string("a\0b", 3));
  // A setup may have opened it to all users.
  MakeProgram("notes.html", "<html>");
  WriteFile(scratch / "text", "#!/bin/sh\n");
  fs::create_symlink("script.txt", scratch / "link");
  fs::create_symlink("none", scratch / "dangling");
  MakeProgram("named.app/Contents/MacOS/main");
  MakeProgram("named.app/Contents/MacOS/other");
  WriteFile(scratch / "named.app/Contents/Info.plist", info);
  MakeProgram("single.APP/Contents/MacOS/x");
  WriteFile(scratch / "single.APP/Contents/MacOS/notes", "");
  WriteFile(scratch / "single.APP/Contents/Info.plist", info);
  MakeProgram("two.app/Contents/MacOS/x");
  MakeProgram("two.app/Contents/MacOS/y");
  WriteFile(scratch / "two.app/Contents/Info.plist",
            "<key>CFBundleExecutable</key><string>../x</string>");
  // "@" stands for the item itself.
  const std::vector<std::pair<const char*, Words>> rows = {
      {"a.zip", {"/h/expand_beside", "@"}},
      {"B.ZIP", {"/h/expand_beside", "@"}},
      {"c.zip", {"xdg-open", "@"}},
      {"script.txt", {"@"}},
      {"binary", {"@"}},
      {"plain", {"/bin/sh", "@"}},
      {"run.command", {"/bin/sh", "@"}},
      {"data", {"@"}},
      {"notes.html", {"xdg-open", "@"}},
      {"text", {"xdg-open", "@"}},
      {"link", {"@"}},
      {"named.app", {"@/Contents/MacOS/main"}},
      {"single.APP", {"@/Contents/MacOS/x"}},
      {"two.app", {"xdg-open", "@"}},
      {"dangling", {}},
      {"none", {}},
  };
  for (auto [name, expected] : rows) {
    for (std::string& word : expected) {
      word = word.starts_with('@') ? (scratch / name).string() + word.substr(1) : word;
    }
    EXPECT_EQ(CommandToOpen(scratch / name, "/h"), expected) << name;
  }
  EXPECT_EQ(CommandToOpen(scratch / "a.zip", ""), (Words{"xdg-open", scratch / "a.zip"}));
}

TEST_F(Launcher, StartedProgramIsNoChildAndInheritsNothing) {
  const std::string name = "a 'b\"\n\xff$(c)";
  MakeProgram(name,
              "#!/bin/sh\n"
              "while read key value; do case $key in Sig[BI]*) sig=$sig$value;; esac; done"
              " </proc/$$/status\n"
              "state=$(cd /proc/$$; readlink fd/0 fd/1 fd/2 cwd\n"
              "echo $sig; echo $PPID $(ps -o sid= -p $$))\n"
              "pipe=$1 name=$2; cd /proc/$$; set -- fd/*\n"
              "printf '<%s>\\n%s\\n%s\\n' \"$name\" \"$*\" \"$state\" >\"$pipe\"\n");
  mkfifo((scratch / "pipe").c_str(), 0600);
  const int leak = dup2(STDERR_FILENO, 9);
  sigset_t some;
  sigset_t before;
  sigemptyset(&some);
  sigaddset(&some, SIGUSR1);
  sigprocmask(SIG_BLOCK, &some, &before);
  const auto ignored = std::signal(SIGUSR2, SIG_IGN);
  {
    const Variable path("PATH", "relative::" + scratch.Path().string() + ":/usr/bin:/bin");
    EXPECT_TRUE(StartDetached({name, scratch / "pipe", name}));
  }
  std::signal(SIGUSR2, ignored);
  sigprocmask(SIG_SETMASK, &before, nullptr);
  close(leak);

  const std::string report = ReadFile(scratch / "pipe");
  // Descriptor 10 is the script, 3 the folder that "fd/*" is read from.
  const std::string expected = "<" + name +
                               ">\nfd/0 fd/1 fd/10 fd/2 fd/3\n"
                               "/dev/null\n/dev/null\n/dev/null\n/\n" +
                               std::string(32, '0') + "\n";
  EXPECT_EQ(report.substr(0, expected.size()), expected);
  std::istringstream last(report.substr(std::min(report.size(), expected.size())));
  pid_t parent = 0;
  pid_t session = 0;
  last >> parent >> session;
  EXPECT_NE(parent, getpid());
  EXPECT_NE(session, getsid(0));
  EXPECT_NE(session, 0);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child may be left to wait for";
}

TEST_F(Launcher, ProgramThatCannotStartIsReported) {
  WriteFile(scratch / "text", "");
  MakeProgram("none.sh", "#!/none\n");
  const std::vector<std::string> words = {scratch / "none",    scratch / "text",
                                          scratch / "none.sh", scratch.Path(),
                                          "none-of-these",     std::string("/bin/true\0x", 11)};
  for (const std::string& word : words) {
    EXPECT_FALSE(StartDetached({word})) << word;
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

}  // namespace
}  // namespace zephin::test
