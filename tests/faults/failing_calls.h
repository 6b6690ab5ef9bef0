#ifndef TESTS_FAULTS_FAILING_CALLS_H_
#define TESTS_FAULTS_FAILING_CALLS_H_

#include <map>
#include <string>

namespace zephin::test {

/// Which calls fail.
enum class Failing {
  One,     ///< One call, once, whatever it is: a disk with a fault.
  Growing  ///< From one on, all that take room: a disk that is full. What frees room works.
};

/// How often each call has been made, by "mkdir path".
using CallCounts = std::map<std::string, int>;

/// While it lives, the first call by which this program changes a disk fails that isn't in `tried`
/// yet, and is added to it; run after run, each call fails so, whatever the order in which threads
/// come to theirs. Only calls of this project's own code count, and none on pipes or sockets. The
/// linker leads them here, so it works in the program that is linked so and in no other.
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
