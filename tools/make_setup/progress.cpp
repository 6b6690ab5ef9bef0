#include "tools/make_setup/progress.h"

#include <unistd.h>

#include <csignal>
#include <iostream>

namespace zephin::make_setup {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds kBetweenLines{100};
/// Carriage return, and the code that clears a terminal's line.
constexpr const char* kClearLine = "\r\x1B[K";

/// The only thing that a handler may write to. Whoever packs looks at it.
volatile std::sig_atomic_t caughtSignal = 0;

void Catch(int signal) {
  caughtSignal = signal;
}

}  // namespace

// A line that rewrites itself fills the log of a build.
Progress::Progress() : onTerminal_(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
  RemoveLine();
}

void Progress::Warn(const std::string& warning) {
  // Or the warning would begin behind the progress.
  RemoveLine();
  std::cerr << "make_setup: warning: " << warning << '\n';
}

void Progress::BeginPacking(const Contents& all) {
  all_ = all;
  start_ = next_ = steady_clock::now();
}

void Progress::Packed(const Contents& more) {
  // Here rather than in the handler, which may run in the middle of anything.
  if (caughtSignal != 0) {
    throw Interrupted();
  }
  done_.files += more.files;
  done_.bytes += more.bytes;
  const auto now = steady_clock::now();
  if (!onTerminal_ || now < next_ || done_.bytes == 0) {
    return;
  }
  next_ = now + kBetweenLines;
  // As if the rest packed as fast as what is done.
  const double spent = std::chrono::duration<double>(now - start_).count();
  const double left = spent * static_cast<double>(all_.bytes - std::min(done_.bytes, all_.bytes)) /
                      static_cast<double>(done_.bytes);
  std::cerr << kClearLine << WithCommas(done_.files) << " of " << WithCommas(all_.files)
            << " files, " << WithUnit(done_.bytes) << " of " << WithUnit(all_.bytes) << ", "
            << static_cast<int>(left + 1) << " s left" << std::flush;
  hasLine_ = true;
}

void Progress::RemoveLine() {
  if (hasLine_) {
    std::cerr << kClearLine << std::flush;
    hasLine_ = false;
  }
}

void EndBySignals() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    std::signal(signal, Catch);
  }
}

void RaiseSignal() {
  if (const int signal = caughtSignal; signal != 0) {
    // A shell sees an ordinary exit status as a program that went on after Ctrl-C.
    std::signal(signal, SIG_DFL);
    (void)std::raise(signal);
  }
}

std::string WithCommas(std::uint64_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3;) {
    at -= 3;
    digits.insert(at, ",");
  }
  return digits;
}

std::string WithUnit(std::uint64_t bytes) {
  constexpr std::uint64_t kKilobyte = 1000;
  constexpr std::uint64_t kMegabyte = 1'000'000;
  return bytes < kMegabyte ? WithCommas((bytes + kKilobyte / 2) / kKilobyte) + " kB"
                           : WithCommas((bytes + kMegabyte / 2) / kMegabyte) + " MB";
}

}  // namespace zephin::make_setup
