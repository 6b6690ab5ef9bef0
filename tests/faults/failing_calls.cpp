#include "tests/faults/failing_calls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <mutex>

namespace zephin::test {
namespace {

enum class Room { Takes, Leaves };

struct Calls {
  Failing which = Failing::One;
  int code = 0;
  std::string root = {};
  CallCounts* tried = nullptr;  // Nil: no call fails.
  CallCounts made = {};
  std::string failed = {};
};

Calls calls;
std::mutex mutex;  // Archives are expanded by several threads.

/// Counts a call and returns whether it fails. Calls without a file on a disk are not counted.
bool Fails(const std::string& call, std::string path, Room room) {
  const std::lock_guard lock(mutex);
  if (calls.tried == nullptr || path.empty() ||
      (calls.which == Failing::Growing && room == Room::Leaves)) {
    return false;
  }
  if (calls.failed.empty()) {
    const bool below = path.starts_with(calls.root);
    const std::string name = call + " " + path.erase(0, below ? calls.root.size() : 0);
    if (++calls.made[name] <= (*calls.tried)[name]) {
      return false;
    }
    ++(*calls.tried)[name];
    calls.failed = name;
  } else if (calls.which == Failing::One) {
    return false;
  }
  errno = calls.code;
  return true;
}

std::string PathOf(int file) {
  std::error_code none;
  return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), none);
}

std::string PathIn(int folder, const char* name) {
  return *name == '/' || folder == AT_FDCWD ? name : PathOf(folder) + "/" + name;
}

/// Empty for a pipe or a socket.
std::string FileOnDisk(int file) {
  struct stat state {};
  return fstat(file, &state) == 0 && S_ISREG(state.st_mode) ? PathOf(file) : "";
}

// The linker's option --wrap redirects calls of NAME to __wrap_NAME, and calls of __real_NAME to
// NAME.

#define WRAPPED(result, name, parameters, arguments, what, room)    \
  extern "C" result __real_##name parameters;                       \
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
WRAPPED(ssize_t, write, (int file, const void* bytes, size_t count), (file, bytes, count),
        FileOnDisk(file), Room::Takes)
WRAPPED(ssize_t, copy_file_range,
        (int from, off64_t* fromPlace, int to, off64_t* toPlace, size_t count, unsigned flags),
        (from, fromPlace, to, toPlace, count, flags), PathOf(to), Room::Takes)
// Callers pass a mode to these two only when they create a file. Otherwise the argument is
// undefined: it is passed on and not used.
WRAPPED(int, open, (const char* path, int flags, mode_t mode), (path, flags, mode),
        (flags & O_CREAT) != 0 ? path : "", Room::Takes)
WRAPPED(int, openat, (int folder, const char* path, int flags, mode_t mode),
        (folder, path, flags, mode), (flags & O_CREAT) != 0 ? PathIn(folder, path) : "",
        Room::Takes)

}  // namespace

FailingCalls::FailingCalls(Failing which, const std::string& root, CallCounts& tried) {
  const std::lock_guard lock(mutex);
  calls = {which, which == Failing::One ? EIO : ENOSPC, root + "/", &tried};
}

FailingCalls::~FailingCalls() {
  const std::lock_guard lock(mutex);
  calls.tried = nullptr;
}

std::string FailingCalls::First() {
  const std::lock_guard lock(mutex);
  return calls.failed;
}

}  // namespace zephin::test
