// The window program, and the pipe to it. Neither keeps the other alive: the window ends when the
// pipe closes, and the expander ignores a window that is gone.
#ifndef PLATFORM_EXPANDER_REPORT_WINDOW_PIPE_H_
#define PLATFORM_EXPANDER_REPORT_WINDOW_PIPE_H_

#include <string>

#include "platform/expander/report/message.h"

namespace zephin::expander {

/// A port to another system writes window_pipe_SYSTEM.cpp.
class WindowPipe {
 public:
  WindowPipe() = default;
  WindowPipe(const WindowPipe&) = delete;
  WindowPipe& operator=(const WindowPipe&) = delete;
  /// Closes the pipe. The window shows what it has been sent.
  ~WindowPipe();

  /// Starts `expansion_window` from the folder of this program. False if it can't be started or if
  /// the session has no display; may be tried again then. Must not be called while it is open.
  bool Start();
  /// Whether a window is there to read, as far as is known.
  bool IsOpen() const { return number_ >= 0; }

  /// Sends a message, or drops it if the window doesn't read fast enough. Never waits.
  void Offer(const Message& message);
  /// Sends a message that must arrive. Waits for a window that reads slowly, but only seconds for
  /// one that doesn't read at all: false then, and if the window is gone.
  bool Send(const Message& message);

 private:
  bool Write(const std::string& line, int patience);

  int number_ = -1;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_REPORT_WINDOW_PIPE_H_
