#include "platform/framework/shell.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>

#include "platform/framework/application.h"
#include "platform/framework/files/system_paths.h"

namespace zephin {
namespace {

constexpr int kNotStarted = 127;
constexpr int kKilled = 128;

/// Makes the exit status of children available. The kernel discards it in a process that ignores
/// SIGCHLD, a setting that a parent process can hand down.
class ChildrenKeptForWaiting {
 public:
  ChildrenKeptForWaiting() {
    sigaction(SIGCHLD, nullptr, &before_);
    const bool ignored = (before_.sa_flags & SA_SIGINFO) == 0 && before_.sa_handler == SIG_IGN;
    if (ignored || (before_.sa_flags & SA_NOCLDWAIT) != 0) {
      struct sigaction kept = before_;
      kept.sa_flags &= ~SA_NOCLDWAIT;
      if (ignored) {
        kept.sa_handler = SIG_DFL;
      }
      changed_ = sigaction(SIGCHLD, &kept, nullptr) == 0;
    }
  }
  ~ChildrenKeptForWaiting() {
    if (changed_) {
      sigaction(SIGCHLD, &before_, nullptr);
    }
  }
  ChildrenKeptForWaiting(const ChildrenKeptForWaiting&) = delete;
  ChildrenKeptForWaiting& operator=(const ChildrenKeptForWaiting&) = delete;

 private:
  struct sigaction before_ {};
  bool changed_ = false;
};

/// How the shell is started: of this process it inherits only standard error.
class SpawnSettings {
 public:
  SpawnSettings() {
    posix_spawn_file_actions_init(&files_);
    posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1);
    sigset_t none;
    sigemptyset(&none);
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~SpawnSettings() {
    posix_spawnattr_destroy(&attributes_);
    posix_spawn_file_actions_destroy(&files_);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  const posix_spawn_file_actions_t* Files() const { return &files_; }
  const posix_spawnattr_t* Attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t files_{};
  posix_spawnattr_t attributes_{};
};

/// The command, preceded by the definition of a function `ditto`. The helpers folder is not added
/// to PATH because that cannot hold a folder with a colon in its name.
std::string WithHelpers(const std::string& command) {
  const std::string& helpers = Application::Current().Facts().helpersFolder;
  if (helpers.empty()) {
    return command;
  }
  const FolderItem ditto(PathInFolder(helpers, "ditto"));
  return "ditto() { " + ditto.ShellPath().Bytes() + " \"$@\"; }\n" + command;
}

int RunAndWait(std::string script) {
  const ChildrenKeptForWaiting kept;
  const SpawnSettings settings;
  std::string name = "sh";
  std::string option = "-c";
  const std::array<char*, 4> words{name.data(), option.data(), script.data(), nullptr};
  pid_t child = 0;
  if (posix_spawn(&child, "/bin/sh", settings.Files(), settings.Attributes(), words.data(),
                  environ) != 0) {
    return kNotStarted;
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) {
      return kNotStarted;
    }
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : kKilled + WTERMSIG(status);
}

}  // namespace

void Shell::Execute(const String& command) {
  const std::string bytes = PathBytes(command);
  // The shell would end the command at a byte 0 and run only its first half.
  errorCode_ = bytes.find('\0') == std::string::npos ? RunAndWait(WithHelpers(bytes)) : kNotStarted;
}

}  // namespace zephin
