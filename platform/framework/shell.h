#ifndef PLATFORM_FRAMEWORK_SHELL_H_
#define PLATFORM_FRAMEWORK_SHELL_H_

#include "platform/framework/string.h"

namespace zephin {

/// Runs command lines in the system's POSIX shell.
class Shell {
 public:
  /// Has no effect: 0 is the only mode, in which `Execute` returns when the command has ended.
  void SetMode(int /*mode*/) {}

  /// Runs the command and waits for its end; no events are processed meanwhile. In the command,
  /// `ditto` means the program of that name in the machine's helpers folder. Standard input and
  /// output are /dev/null. Processes that the command leaves in the background are not waited for.
  void Execute(const String& command);

  /// Exit status of the last command: 0 for success, 127 if the shell could not be started or the
  /// command holds a byte 0, 128 plus the signal's number if the shell was killed.
  int ErrorCode() const { return errorCode_; }

 private:
  int errorCode_ = 0;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_SHELL_H_
