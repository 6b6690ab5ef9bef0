#include "tests/platform/expander/system_calls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cerrno>
#include <mutex>

namespace zephin::test {
namespace {

std::atomic<SystemCalls*> current = nullptr;
std::mutex mutex;  // The expander has two threads.

bool Fails(const char* call) {
  const SystemCalls* calls = current;
  const auto found =
      calls == nullptr ? std::map<std::string, int>::const_iterator() : calls->failing.find(call);
  if (calls == nullptr || found == calls->failing.end()) {
    return false;
  }
  errno = found->second;
  return true;
}

std::string OnDisk(const char* name) {
  std::string result = name;
  if (const SystemCalls* calls = current; calls != nullptr && calls->ignoresCase) {
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  }
  return result;
}

void BeforeMaking(const char* name) {
  std::function<void()> act;
  if (SystemCalls* calls = current; calls != nullptr) {
    ++calls->made;
    const std::lock_guard lock(mutex);
    const auto found = calls->before.find(name);
    if (found != calls->before.end()) {
      act = std::move(found->second);
      calls->before.erase(found);
    }
  }
  if (act) {
    act();
  }
}

// The linker leads the calls of NAME to __wrap_NAME, and calls of __real_NAME to NAME.

#define WRAPPED(name, parameters, arguments)            \
  extern "C" int __real_##name parameters;              \
  extern "C" int __wrap_##name parameters {             \
    return Fails(#name) ? -1 : __real_##name arguments; \
  }

WRAPPED(fchmod, (int file, mode_t mode), (file, mode))
WRAPPED(futimens, (int file, const timespec* times), (file, times))
WRAPPED(inotify_init1, (int flags), (flags))
WRAPPED(fstatat, (int folder, const char* name, struct stat* status, int flags),
        (folder, OnDisk(name).c_str(), status, flags))
WRAPPED(statx, (int folder, const char* name, int flags, unsigned mask, struct statx* status),
        (folder, OnDisk(name).c_str(), flags, mask, status))
WRAPPED(unlinkat, (int folder, const char* name, int flags), (folder, OnDisk(name).c_str(), flags))
WRAPPED(renameat2, (int from, const char* name, int to, const char* toName, unsigned flags),
        (from, OnDisk(name).c_str(), to, OnDisk(toName).c_str(), flags))
WRAPPED(utimensat, (int folder, const char* name, const timespec* times, int flags),
        (folder, OnDisk(name).c_str(), times, flags))

extern "C" int __real_mkdirat(int folder, const char* name, mode_t mode);
extern "C" int __wrap_mkdirat(int folder, const char* name, mode_t mode) {
  BeforeMaking(name);
  return Fails("mkdirat") ? -1 : __real_mkdirat(folder, OnDisk(name).c_str(), mode);
}

extern "C" int __real_symlinkat(const char* target, int folder, const char* name);
extern "C" int __wrap_symlinkat(const char* target, int folder, const char* name) {
  BeforeMaking(name);
  return Fails("symlinkat") ? -1 : __real_symlinkat(target, folder, OnDisk(name).c_str());
}

extern "C" int __real_linkat(int from, const char* name, int to, const char* toName, int flags);
extern "C" int __wrap_linkat(int from, const char* name, int to, const char* toName, int flags) {
  BeforeMaking(toName);
  return Fails("linkat") ? -1 : __real_linkat(from, name, to, OnDisk(toName).c_str(), flags);
}

extern "C" int __real_openat(int folder, const char* name, int flags, mode_t mode);
extern "C" int __wrap_openat(int folder, const char* name, int flags, mode_t mode) {
  const SystemCalls* calls = current;
  if ((flags & O_TMPFILE) == O_TMPFILE && calls != nullptr && calls->noUnnamedFiles) {
    errno = EOPNOTSUPP;
    return -1;
  }
  if ((flags & O_CREAT) != 0) {
    BeforeMaking(name);
  }
  return Fails("openat") ? -1 : __real_openat(folder, OnDisk(name).c_str(), flags, mode);
}

// Only the end of files that were written fails.
extern "C" int __real_close(int file);
extern "C" int __wrap_close(int file) {
  struct stat status {};
  const bool written = current != nullptr && ::fstat(file, &status) == 0 &&
                       S_ISREG(status.st_mode) && (::fcntl(file, F_GETFL) & O_ACCMODE) == O_WRONLY;
  const int result = __real_close(file);
  return written && Fails("close") ? -1 : result;
}

extern "C" int __real_fstatvfs(int file, struct statvfs* disk);
extern "C" int __wrap_fstatvfs(int file, struct statvfs* disk) {
  const int result = __real_fstatvfs(file, disk);
  if (const SystemCalls* calls = current; calls != nullptr && calls->room) {
    disk->f_frsize = 4096;
    disk->f_bfree = disk->f_bavail = calls->room->first;
    disk->f_files = calls->room->second == 0 ? 0 : 1'000'000;
    disk->f_ffree = disk->f_favail = calls->room->second;
  }
  return result;
}

}  // namespace

SystemCalls::SystemCalls() {
  current = this;
}

SystemCalls::~SystemCalls() {
  current = nullptr;
}

}  // namespace zephin::test
