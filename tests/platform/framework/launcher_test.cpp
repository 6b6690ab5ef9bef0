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
using namespace std::string_literals;

class Launcher : public testing::Test {
 protected:
  void MakeProgram(const std::string& name, const std::string& content = "#!/bin/sh\n") const {
    WriteFile(scratch / name, content);
    fs::permissions(scratch / name, fs::perms(0777));
  }
  /// The command that opens an item; "@" replaces the item's path.
  std::string Opening(const std::string& name, const std::string& helpers = "/h") const {
    const std::string path = scratch / name;
    std::string words;
    for (const std::string& word : CommandToOpen(path, helpers).words) {
      words += " " + (word.starts_with(path) ? "@" + word.substr(path.size()) : word);
    }
    return words;
  }

  const ScratchFolder scratch;
};

TEST_F(Launcher, OpensEachKindOfFileLikeADoubleClick) {
  // All are executable, as a setup may have granted all rights on them.
  const std::vector<std::tuple<const char*, std::string, const char*>> rows = {
      {"B.ZIP", "", " /h/expand_beside --open @"},
      {"script.txt", "#!/bin/sh\n", " @"},
      {"binary", "\177ELF\0"s, " @"},
      {"plain", "echo\n", " /bin/sh @"},
      {"run.command", "echo\n", " /bin/sh @"},
      {"data", "a\0b"s, " @"},
      {"notes.html", "<html>", " xdg-open @"},
  };
  for (const auto& [name, content, expected] : rows) {
    MakeProgram(name, content);
    EXPECT_EQ(Opening(name), expected) << name;
  }
  EXPECT_EQ(CommandToOpen(scratch / "B.ZIP", "/h").input, scratch / "B.ZIP");
  EXPECT_EQ(Opening("B.ZIP", ""), " xdg-open @");
  WriteFile(scratch / "folder.zip/in", "");
  EXPECT_EQ(Opening("folder.zip"), " xdg-open @");
  WriteFile(scratch / "text", "#!/bin/sh\n");
  EXPECT_EQ(Opening("text"), " xdg-open @");
  fs::create_symlink("script.txt", scratch / "link");
  EXPECT_EQ(Opening("link"), " @");
  fs::create_symlink("none", scratch / "dangling");
  EXPECT_EQ(Opening("dangling"), "");
}

TEST_F(Launcher, StartsTheProgramThatABundleNamesOrItsOnlyOne) {
  const auto name = [this](const std::string& program) {
    WriteFile(scratch / "a.APP/Contents/Info.plist",
              "<dict><key>CFBundleExecutable</key>\n\t<string>" + program + "</string></dict>");
  };
  name("none");
  WriteFile(scratch / "a.APP/Contents/MacOS/notes", "");
  MakeProgram("a.APP/Contents/MacOS/x");
  EXPECT_EQ(Opening("a.APP"), " @/Contents/MacOS/x");
  MakeProgram("a.APP/Contents/MacOS/y");
  EXPECT_EQ(Opening("a.APP"), " xdg-open @");
  name("y");
  EXPECT_EQ(Opening("a.APP"), " @/Contents/MacOS/y");
  name("../MacOS/y");
  EXPECT_EQ(Opening("a.APP"), " xdg-open @");
}

TEST_F(Launcher, StartedProgramIsDetachedAndInheritsNothing) {
  const std::string name = "a 'b\"\n\xff$(c)";
  MakeProgram(name,
              "#!/bin/sh\n"
              "state=$(cd /proc/$$; readlink fd/0 fd/1 fd/2 cwd; grep -c 'Sig[BI].*:.0*$' status\n"
              "[ $PPID = $3 ] || [ $(ps -o sid= -p $$) = $4 ] || echo apart)\n"
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
    EXPECT_TRUE(StartDetached(
        {{name, scratch / "pipe", name, std::to_string(getpid()), std::to_string(getsid(0))}, ""}));
  }
  std::signal(SIGUSR2, ignored);
  sigprocmask(SIG_SETMASK, &before, nullptr);
  close(leak);
  // Descriptor 10 is the script, 3 the folder that the shell reads for "fd/*".
  EXPECT_EQ(ReadFile(scratch / "pipe"), "<" + name +
                                            ">\nfd/0 fd/1 fd/10 fd/2 fd/3\n"
                                            "/dev/null\n/dev/null\n/dev/null\n/\n2\napart\n");
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child may be left to wait for";
}

TEST_F(Launcher, InputIsOpenBeforeTheProgramRuns) {
  MakeProgram("reader", "#!/bin/sh\nread go <\"$1\"; cat >\"$1\"\n");
  WriteFile(scratch / "input", "text");
  mkfifo((scratch / "pipe").c_str(), 0600);
  EXPECT_TRUE(StartDetached({{scratch / "reader", scratch / "pipe"}, scratch / "input"}));
  fs::remove(scratch / "input");
  WriteFile(scratch / "pipe", "go\n");
  EXPECT_EQ(ReadFile(scratch / "pipe"), "text");
}

TEST_F(Launcher, ProgramThatCannotStartIsReported) {
  WriteFile(scratch / "text", "");
  MakeProgram("none.sh", "#!/none\n");
  for (const std::string& word :
       {"/none"s, (scratch / "text").string(), (scratch / "none.sh").string(),
        scratch.Path().string(), "none-of-these"s, "/bin/true\0x"s}) {
    EXPECT_FALSE(StartDetached({{word}, ""})) << word;
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

}  // namespace
}  // namespace zephin::test
