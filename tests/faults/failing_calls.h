#ifndef TESTS_FAULTS_FAILING_CALLS_H_
#define TESTS_FAULTS_FAILING_CALLS_H_

#include <map>
#include <string>

namespace zephin::test {

/// Which calls fail.
enum class Failing {
  One,     ///< One call, once: a disk with a fault.
  Growing  ///< From one call on, all that need space: a full disk. Freeing space works.
};

/// How often each call has been made, by "mkdir path".
using CallCounts = std::map<std::string, int>;

/// During its life, fails the first call by this program that changes a disk and is not yet in
/// `tried`, and adds it there. In repeated runs every call fails once, whatever the order of the
/// threads. Only calls from this project's own code count, and none on pipes or sockets. The linker
/// redirects the calls (see CMakeLists.txt).
class FailingCalls {
 public:
  /// Paths below `root` are named from there.
  FailingCalls(Failing which, const std::string& root, CallCounts& tried);
  ~FailingCalls();
  FailingCalls(const FailingCalls&) = delete;
  FailingCalls& operator=(const FailingCalls&) = delete;

  /// The first call that failed, as "mkdir path"; empty if none has.
  static std::string First();
};

}  // namespace zephin::test

#endif  // TESTS_FAULTS_FAILING_CALLS_H_
