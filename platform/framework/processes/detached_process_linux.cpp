#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "platform/framework/files/file_descriptor.h"
#include "platform/framework/files/system_paths.h"
#include "platform/framework/launcher.h"

namespace zephin {
namespace {

constexpr int kReport = STDERR_FILENO + 1;

/// The absolute path of a program; empty if no folder in PATH contains it. Relative folders in PATH
/// are ignored.
std::string FindProgram(const std::string& word) {
  if (word.find('/') != std::string::npos) {
    return word;
  }
  const char* variable = std::getenv("PATH");
  std::string_view folders = variable == nullptr ? "/usr/local/bin:/usr/bin:/bin" : variable;
  while (!folders.empty()) {
    const std::size_t end = std::min(folders.find(':'), folders.size());
    std::string path = PathInFolder(std::string(folders.substr(0, end)), word);
    if (folders.front() == '/' && access(path.c_str(), X_OK) == 0) {
      return path;
    }
    folders.remove_prefix(std::min(end + 1, folders.size()));
  }
  return {};
}

// Between fork and exec only async-signal-safe calls are allowed: at the moment of the fork another
// thread may have held any lock, including the one of the heap.

[[noreturn]] void ReportAndEnd(int code) {
  const ssize_t written = write(kReport, &code, sizeof code);
  _exit(written == sizeof code ? EXIT_SUCCESS : EXIT_FAILURE);
}

/// What a child runs.
struct Start {
  const char* program;
  char* const* words;
  const char* input;  ///< Path of its standard input.
};

/// Makes `report` the descriptor kReport, opens the standard descriptors on /dev/null, the input on
/// its file if that can be read, and closes all others.
void LeaveDescriptorsBehind(int report, const char* input) {
  const int nowhere = open("/dev/null", O_RDWR);
  const bool nowhereKept = nowhere == STDIN_FILENO || dup2(nowhere, STDIN_FILENO) >= 0;
  if (report != kReport) {
    dup3(report, kReport, O_CLOEXEC);
  }
  if (!nowhereKept || dup2(STDIN_FILENO, STDOUT_FILENO) < 0 ||
      dup2(STDIN_FILENO, STDERR_FILENO) < 0) {
    ReportAndEnd(errno);
  }
  if (close_range(kReport + 1, ~0U, 0) != 0) {
    rlimit most{};
    getrlimit(RLIMIT_NOFILE, &most);
    for (rlim_t number = kReport + 1; number < most.rlim_cur; ++number) {
      close(static_cast<int>(number));
    }
  }
  // O_NONBLOCK: opening a pipe must not wait for its other end.
  const int file = open(input, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file >= 0) {
    dup2(file, STDIN_FILENO);
  }
}

/// All signals are blocked when this is called, so that no handler of this program runs in the
/// child.
void ResetSignals() {
  struct sigaction usual {};
  usual.sa_handler = SIG_DFL;
  for (int number = 1; number < NSIG; ++number) {
    sigaction(number, &usual, nullptr);
  }
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void RunChild(const Start& start, int report) {
  setsid();
  // The second child becomes an orphan, and its adoptive parent waits for its end. This process
  // waits only for the first one, which ends at once.
  const pid_t second = fork();
  if (second > 0) {
    _exit(EXIT_SUCCESS);
  }
  LeaveDescriptorsBehind(report, start.input);
  if (second < 0 || chdir("/") != 0) {
    ReportAndEnd(errno);
  }
  ResetSignals();
  execve(start.program, start.words, environ);
  ReportAndEnd(errno);
}

/// Returns the id of the first child; negative if there is none.
pid_t ForkChild(const Start& start, int report) {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  const pid_t child = fork();
  if (child == 0) {
    RunChild(start, report);
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return child;
}

}  // namespace

bool StartDetached(const Command& command) {
  const std::string program = FindProgram(command.words.front());
  const std::string input = command.input.empty() ? "/dev/null" : SystemPath(command.input);
  std::vector<std::string> copies = command.words;
  std::vector<char*> words;
  for (std::string& word : copies) {
    if (word.find('\0') != std::string::npos) {
      return false;
    }
    words.push_back(word.data());
  }
  words.push_back(nullptr);
  std::array<int, 2> ends{};
  if (program.empty() || pipe2(ends.data(), O_CLOEXEC) != 0) {
    return false;
  }
  const FileDescriptor listening(ends[0]);
  FileDescriptor lower(ends[1]);
  // A number above the standard descriptors, which may be closed in this process.
  FileDescriptor report(fcntl(lower.Number(), F_DUPFD_CLOEXEC, kReport));
  lower.Close();
  if (!report.IsOpen()) {
    return false;
  }
  const pid_t child = ForkChild({program.c_str(), words.data(), input.c_str()}, report.Number());
  report.Close();
  if (child < 0) {
    return false;
  }
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  // The pipe is closed by exec, without a byte, if the program has started.
  int code = 0;
  ssize_t got = 0;
  do {
    got = read(listening.Number(), &code, sizeof code);
  } while (got < 0 && errno == EINTR);
  return got == 0;
}

}  // namespace zephin
