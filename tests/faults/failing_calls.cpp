#include "tests/faults/failing_calls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <mutex>

namespace zephin::test {
namespace {

enum class Room { Takes, Leaves };

struct State {
  std::mutex mutex;  // Archives are expanded by several threads.
  bool counts = false;
  Failing which = Failing::One;
  int first = 0;
  int code = 0;
  int count = 0;
  std::string failed;
};

State& Calls() {
  static State state;
  return state;
}

/// Counts a call, and says whether it fails.
bool Fails(const char* call, const std::string& what, Room room) {
  State& state = Calls();
  const std::lock_guard lock(state.mutex);
  if (!state.counts || (state.which == Failing::Growing && room == Room::Leaves)) {
    return false;
  }
  ++state.count;
  const bool fails = state.first > 0 && (state.which == Failing::One ? state.count == state.first
                                                                     : state.count >= state.first);
  if (fails) {
    if (state.failed.empty()) {
      state.failed = call + (" " + what);
    }
    errno = state.code;
  }
  return fails;
}

std::string PathOf(int file) {
  std::array<char, PATH_MAX> path{};
  const ssize_t size =
      readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), path.data(), path.size());
  return {path.data(), size < 0 ? 0 : static_cast<std::size_t>(size)};
}

std::string PathIn(int folder, const char* name) {
  return *name == '/' || folder == AT_FDCWD ? name : PathOf(folder) + "/" + name;
}

bool IsOnDisk(int file) {
  struct stat state {};
  return fstat(file, &state) == 0 && S_ISREG(state.st_mode);
}

}  // namespace

FailingCalls::FailingCalls(Failing which, int first, int code) {
  State& state = Calls();
  const std::lock_guard lock(state.mutex);
  state.counts = true;
  state.which = which;
  state.first = first;
  state.code = code;
  state.count = 0;
  state.failed.clear();
}

FailingCalls::~FailingCalls() {
  State& state = Calls();
  const std::lock_guard lock(state.mutex);
  state.counts = false;
}

std::string FailingCalls::First() {
  State& state = Calls();
  const std::lock_guard lock(state.mutex);
  return state.failed;
}

}  // namespace zephin::test

// The linker's option --wrap leads the calls of NAME to __wrap_NAME, and calls of __real_NAME to
// NAME. NOLINTBEGIN: names and forms are those of the linker and of the C library.

using zephin::test::Fails;
using zephin::test::IsOnDisk;
using zephin::test::PathIn;
using zephin::test::PathOf;
using zephin::test::Room;

#define WRAPPED(result, name, parameters, arguments, what, room)    \
  extern "C" result __real_##name parameters;                       \
  extern "C" result __wrap_##name parameters;                       \
  extern "C" result __wrap_##name parameters {                      \
    return Fails(#name, what, room) ? -1 : __real_##name arguments; \
  }

WRAPPED(int, mkdir, (const char* path, mode_t mode), (path, mode), path, Room::Takes)
WRAPPED(int, mkdirat, (int folder, const char* path, mode_t mode), (folder, path, mode),
        PathIn(folder, path), Room::Takes)
WRAPPED(int, symlink, (const char* target, const char* path), (target, path), path, Room::Takes)
WRAPPED(int, symlinkat, (const char* target, int folder, const char* path), (target, folder, path),
        PathIn(folder, path), Room::Takes)
WRAPPED(int, rename, (const char* from, const char* to), (from, to), to, Room::Leaves)
WRAPPED(int, renameat2, (int from, const char* path, int to, const char* toPath, unsigned flags),
        (from, path, to, toPath, flags), PathIn(to, toPath), Room::Leaves)
WRAPPED(int, unlink, (const char* path), (path), path, Room::Leaves)
WRAPPED(int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags),
        PathIn(folder, path), Room::Leaves)
WRAPPED(int, remove, (const char* path), (path), path, Room::Leaves)
WRAPPED(int, chmod, (const char* path, mode_t mode), (path, mode), path, Room::Leaves)
WRAPPED(int, fchmod, (int file, mode_t mode), (file, mode), PathOf(file), Room::Leaves)

extern "C" ssize_t __real_write(int file, const void* bytes, size_t count);
extern "C" ssize_t __wrap_write(int file, const void* bytes, size_t count);
extern "C" ssize_t __wrap_write(int file, const void* bytes, size_t count) {
  return IsOnDisk(file) && Fails("write", PathOf(file), Room::Takes)
             ? -1
             : __real_write(file, bytes, count);
}

extern "C" ssize_t __real_copy_file_range(int from, off64_t* fromPlace, int to, off64_t* toPlace,
                                          size_t count, unsigned flags);
extern "C" ssize_t __wrap_copy_file_range(int from, off64_t* fromPlace, int to, off64_t* toPlace,
                                          size_t count, unsigned flags);
extern "C" ssize_t __wrap_copy_file_range(int from, off64_t* fromPlace, int to, off64_t* toPlace,
                                          size_t count, unsigned flags) {
  return Fails("copy_file_range", PathOf(to), Room::Takes)
             ? -1
             : __real_copy_file_range(from, fromPlace, to, toPlace, count, flags);
}

extern "C" int __real_open(const char* path, int flags, mode_t mode);
extern "C" int __wrap_open(const char* path, int flags, ...);
extern "C" int __wrap_open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(rest, int) : 0);
  va_end(rest);
  return (flags & O_CREAT) != 0 && Fails("open", path, Room::Takes)
             ? -1
             : __real_open(path, flags, mode);
}

extern "C" int __real_openat(int folder, const char* path, int flags, mode_t mode);
extern "C" int __wrap_openat(int folder, const char* path, int flags, ...);
extern "C" int __wrap_openat(int folder, const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(rest, int) : 0);
  va_end(rest);
  return (flags & O_CREAT) != 0 && Fails("openat", PathIn(folder, path), Room::Takes)
             ? -1
             : __real_openat(folder, path, flags, mode);
}

// NOLINTEND
