// Replaces calls of the operating system in this test program: disks that the machine doesn't have,
// and acts of other programs at an exact moment.
#ifndef TESTS_PLATFORM_EXPANDER_SYSTEM_CALLS_H_
#define TESTS_PLATFORM_EXPANDER_SYSTEM_CALLS_H_

#include <atomic>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace zephin::test {

// While it lives, the linker's option --wrap leads the expander's calls through it. One at a time.
struct SystemCalls {
  SystemCalls();
  ~SystemCalls();
  SystemCalls(const SystemCalls&) = delete;
  SystemCalls& operator=(const SystemCalls&) = delete;

  // Calls that fail with this code, by name ("futimens").
  std::map<std::string, int> failing = {};
  // Called once by the thread that is about to make the file of this name.
  std::map<std::string, std::function<void()>> before = {};
  // The disk ignores the case of letters in names.
  bool ignoresCase = false;
  // The disk has no files without a name.
  bool noUnnamedFiles = false;
  // Free blocks of 4096 bytes, and free items: 0 for a disk without a fixed number of them.
  std::optional<std::pair<unsigned long, unsigned long>> room = {};
  // Number of files, links and folders made with a name, and of names given to unnamed files.
  std::atomic<int> made = 0;
};

}  // namespace zephin::test

#endif  // TESTS_PLATFORM_EXPANDER_SYSTEM_CALLS_H_
