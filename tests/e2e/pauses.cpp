// Preloaded into the program. Measures how long the main thread is away from its event loop, and
// reports it to the test in a file that both map.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>

struct pollfd;

namespace {

/// The contents of the file. Times are in nanoseconds.
struct Record {
  std::uint64_t looks;  ///< Number of iterations of the event loop.
  /// The longest pause, without the time in which the thread waited for a processor.
  std::uint64_t longest;
};

/// A time, and how long this thread has waited for a processor until then.
struct Moment {
  std::uint64_t wall = 0;
  std::uint64_t queued = 0;
};

// The mapping and the descriptor are never released, since the process may end at any time.
Record* record = nullptr;
int statistics = -1;
Moment since;
bool pollIsDue = false;

bool Watched() {
  return record != nullptr && gettid() == getpid();
}

Moment Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  // "time on a processor, time in the queue for one, turns", on systems that keep count.
  std::array<char, 128> line{};
  std::uint64_t queued = 0;
  if (pread(statistics, line.data(), line.size() - 1, 0) > 0) {
    char* end = nullptr;
    std::strtoull(line.data(), &end, 10);
    queued = std::strtoull(end, nullptr, 10);
  }
  constexpr std::uint64_t kSecond = 1'000'000'000;
  return {
      static_cast<std::uint64_t>(now.tv_sec) * kSecond + static_cast<std::uint64_t>(now.tv_nsec),
      queued};
}

void BeginPause() {
  since = Now();
}

void EndPause() {
  const Moment now = Now();
  const std::uint64_t wall = now.wall - since.wall;
  record->longest = std::max(record->longest, wall - std::min(wall, now.queued - since.queued));
}

template <class Function>
Function* Next(const char* name) {
  // The linker gives functions as void*.
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

[[gnu::constructor]] void Start() {
  const char* path = std::getenv("RECORD_OF_PAUSES");
  const int file = path == nullptr ? -1 : open(path, O_RDWR | O_CLOEXEC);
  // Programs that this one starts are not measured.
  unsetenv("RECORD_OF_PAUSES");
  unsetenv("LD_PRELOAD");
  if (file < 0) {
    return;
  }
  statistics = open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC);
  void* shared = mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  close(file);
  if (shared != MAP_FAILED) {
    BeginPause();
    record = static_cast<Record*>(shared);
  }
}

}  // namespace

// One iteration of the event loop: the toolkit is built on this function.
extern "C" int g_main_context_iteration(void* context, int mayBlock) {
  static auto* const next = Next<int(void*, int)>("g_main_context_iteration");
  if (!Watched()) {
    return next(context, mayBlock);
  }
  EndPause();
  ++record->looks;
  pollIsDue = true;
  const int result = next(context, mayBlock);
  pollIsDue = false;
  BeginPause();
  return result;
}

// The wait for an event in an iteration. The event is handled after it.
extern "C" int poll(pollfd* files, unsigned long count, int milliseconds) {
  static auto* const next = Next<int(pollfd*, unsigned long, int)>("poll");
  const int result = next(files, count, milliseconds);
  if (Watched() && pollIsDue) {
    pollIsDue = false;
    BeginPause();
  }
  return result;
}

// A shell command may block the window for as long as it runs.
extern "C" pid_t waitpid(pid_t process, int* status, int options) {
  static auto* const next = Next<pid_t(pid_t, int*, int)>("waitpid");
  if (!Watched()) {
    return next(process, status, options);
  }
  EndPause();
  const pid_t result = next(process, status, options);
  BeginPause();
  return result;
}
