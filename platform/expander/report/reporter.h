// Shows the user what an expansion does, in the window program: from the second second on its
// progress, and at its end a failure. The expansion itself never waits for this.
#ifndef PLATFORM_EXPANDER_REPORT_REPORTER_H_
#define PLATFORM_EXPANDER_REPORT_REPORTER_H_

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

#include "platform/expander/report/report.h"
#include "platform/expander/report/window_pipe.h"

namespace zephin::expander {

/// Works in a thread of its own until End. Without a thread, display or window program it does
/// nothing.
class Reporter {
 public:
  /// `report` must outlive this object.
  Reporter(Job job, const Report& report);
  Reporter(const Reporter&) = delete;
  Reporter& operator=(const Reporter&) = delete;
  ~Reporter();

  /// Ends the progress. If the report has a failure and the job shows failures, hands it to the
  /// window, which stays until the user closes it; waits until it has been handed over. `placed`
  /// and `expanded` as in Failure.
  void End(const std::string& placed, std::uint64_t expanded);

 private:
  void Run();
  bool Open();
  void Stop();

  Job job_;
  const Report& report_;
  WindowPipe window_;
  std::mutex mutex_;
  std::condition_variable changed_;
  bool ended_ = false;
  std::thread thread_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_REPORT_REPORTER_H_
