#ifndef TOOLS_MAKE_SETUP_PROGRESS_H_
#define TOOLS_MAKE_SETUP_PROGRESS_H_

#include <chrono>
#include <string>

#include "tools/make_setup/bundle.h"

namespace zephin::make_setup {

/// Thrown through a run that a signal ends.
struct Interrupted {};

/// Writes warnings, and on a terminal a line of progress, to standard error. Ends the run by
/// Interrupted after a signal that asks for its end (see EndBySignals).
class Progress : public Observer {
 public:
  Progress();
  /// Removes the line.
  ~Progress() override;

  void Warn(const std::string& warning) override;
  void BeginPacking(const Contents& all) override;
  void Packed(const Contents& more) override;

 private:
  void RemoveLine();

  bool onTerminal_;
  bool hasLine_ = false;
  Contents all_;
  Contents done_;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point next_;  ///< When the line is due again.
};

/// From now on SIGINT, SIGTERM and SIGHUP end a run by Interrupted.
void EndBySignals();
/// Ends the process by the signal that came, as its caller expects. Returns if none did.
void RaiseSignal();

/// A number with "," between thousands: "4,900".
std::string WithCommas(std::uint64_t number);
/// A size in decimal units, rounded: "85 MB", "12 kB".
std::string WithUnit(std::uint64_t bytes);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PROGRESS_H_
