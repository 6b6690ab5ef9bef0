#ifndef PLATFORM_FRAMEWORK_SHELL_H_
#define PLATFORM_FRAMEWORK_SHELL_H_

#include "platform/framework/string.h"

namespace zephin {

/// Runs command lines in the system's POSIX shell.
class Shell {
 public:
  /// Has no effect: 0 is the only mode, in which `Execute` returns when the command has ended.
  void SetMode(int /*mode*/) {}

  /// Runs the command and waits for it, without letting events run. `ditto` in it is the program of
  /// that name in the machine's helpers folder. Its output goes nowhere; what the command leaves
  /// running behind is not waited for.
  void Execute(const String& command);

  /// Exit status of the last command: 0 for success; 127 if the shell can't be started, 128 and the
  /// signal's number if it was killed.
  int ErrorCode() const { return errorCode_; }

 private:
  int errorCode_ = 0;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_SHELL_H_
