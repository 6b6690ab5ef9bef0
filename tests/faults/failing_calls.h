#ifndef TESTS_FAULTS_FAILING_CALLS_H_
#define TESTS_FAULTS_FAILING_CALLS_H_

#include <string>

namespace zephin::test {

/// Which calls fail.
enum class Failing {
  One,     ///< One call, once, whatever it is: a disk with a fault.
  Growing  ///< From one on, all that take room: a disk that is full. What frees room works.
};

/// While it lives, the calls by which this program changes a disk are counted, and some fail. Only
/// calls of this project's own code count, and none on pipes or sockets. The linker leads them
/// here, so it works in the program that is linked so and in no other.
class FailingCalls {
 public:
  /// The calls are numbered from 1. 0: none fails.
  FailingCalls(Failing which, int first, int code);
  ~FailingCalls();
  FailingCalls(const FailingCalls&) = delete;
  FailingCalls& operator=(const FailingCalls&) = delete;

  /// Whether any call has failed.
  static bool HasFailed() { return !First().empty(); }
  /// The first call that failed, as "mkdir /path"; empty if none has.
  static std::string First();
};

}  // namespace zephin::test

#endif  // TESTS_FAULTS_FAILING_CALLS_H_
