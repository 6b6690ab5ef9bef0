#include "platform/expander/report/window_pipe.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <string_view>

namespace zephin::expander {
namespace {

constexpr const char* kWindowProgram = "expansion_window";
/// In milliseconds, for each part of a message that must arrive.
constexpr int kPatience = 3000;

bool SessionHasDisplay() {
  const char* display = std::getenv("DISPLAY");
  return display != nullptr && *display != '\0';
}

/// The path of a program in the folder of this one; empty if that is unknown.
std::string Beside(const char* name) {
  std::array<char, PATH_MAX> path{};
  const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
  const std::string_view own(path.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
  const std::size_t slash = own.rfind('/');
  return slash == std::string_view::npos ? std::string()
                                         : std::string(own.substr(0, slash + 1)) + name;
}

class SpawnSettings {
 public:
  SpawnSettings() {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawnattr_init(&attributes_);
  }
  ~SpawnSettings() {
    ::posix_spawnattr_destroy(&attributes_);
    ::posix_spawn_file_actions_destroy(&actions_);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  /// The window reads from `input` and has no other descriptor: an installer that waits until the
  /// expander closes its output must not wait for the window. It works in "/", so that a disk can
  /// be unmounted, and in a session of its own, so that it outlives a terminal.
  bool Set(int input) {
    sigset_t all;
    sigset_t none;
    ::sigfillset(&all);
    ::sigemptyset(&none);
    constexpr short kFlags = POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK;
    return ::posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO) == 0 &&
           ::posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0) ==
               0 &&
           ::posix_spawn_file_actions_adddup2(&actions_, STDOUT_FILENO, STDERR_FILENO) == 0 &&
           ::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1) == 0 &&
           ::posix_spawn_file_actions_addchdir_np(&actions_, "/") == 0 &&
           ::posix_spawnattr_setsigdefault(&attributes_, &all) == 0 &&
           ::posix_spawnattr_setsigmask(&attributes_, &none) == 0 &&
           ::posix_spawnattr_setflags(&attributes_, kFlags) == 0;
  }

  bool Start(const std::string& program) const {
    std::string name = kWindowProgram;
    const std::array<char*, 2> words{name.data(), nullptr};
    pid_t process = 0;
    return ::posix_spawn(&process, program.c_str(), &actions_, &attributes_, words.data(),
                         environ) == 0;
  }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

}  // namespace

WindowPipe::~WindowPipe() {
  if (number_ >= 0) {
    (void)::close(number_);
  }
}

bool WindowPipe::Start() {
  const std::string program = Beside(kWindowProgram);
  std::array<int, 2> ends{};
  if (!SessionHasDisplay() || program.empty() || ::pipe2(ends.data(), O_CLOEXEC) != 0) {
    return false;
  }
  // The system then removes a window that has ended at once: nobody waits for it.
  (void)std::signal(SIGCHLD, SIG_IGN);
  SpawnSettings settings;
  const bool started = settings.Set(ends[0]) && settings.Start(program);
  (void)::close(ends[0]);
  if (!started || ::fcntl(ends[1], F_SETFL, O_NONBLOCK) != 0) {
    (void)::close(ends[1]);
    return false;
  }
  number_ = ends[1];
  return true;
}

void WindowPipe::Offer(const Message& message) {
  const std::string line = Encode(message);
  // A line up to this length is written whole or not at all.
  if (line.size() <= PIPE_BUF) {
    (void)Write(line, 0);
  }
}

bool WindowPipe::Send(const Message& message) {
  return Write(Encode(message), kPatience);
}

bool WindowPipe::Write(const std::string& line, int patience) {
  std::string_view rest = line;
  while (number_ >= 0 && !rest.empty()) {
    const ssize_t written = ::write(number_, rest.data(), rest.size());
    if (written >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(written));
      continue;
    }
    pollfd reader{number_, POLLOUT, 0};
    const bool full = errno == EAGAIN;
    if (errno != EINTR && !(full && patience > 0 && ::poll(&reader, 1, patience) > 0)) {
      if (!full) {
        (void)::close(number_);
        number_ = -1;
      }
      return false;
    }
  }
  return rest.empty();
}

}  // namespace zephin::expander
