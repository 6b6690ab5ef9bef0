#ifndef UTIL_PROCESS_H_
#define UTIL_PROCESS_H_

#include <cstdint>

/// This process as the user meets it: it waits, and it comes to the front.
namespace zephin::ViewConst {

/// Waits by the clock, in seconds; returns at once for 0 or less. The window stays alive and other
/// events run meanwhile; a Quit in one of them ends the run.
void Sleep(std::int64_t seconds);

/// Brings this process to the front. Failures are ignored.
void MyProcessToTop();

}  // namespace zephin::ViewConst

#endif  // UTIL_PROCESS_H_
