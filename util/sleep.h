#ifndef UTIL_SLEEP_H_
#define UTIL_SLEEP_H_

#include <cstdint>

namespace zephin::ViewConst {

/// Waits by the clock, in seconds. The window stays alive and other events run meanwhile; a Quit in
/// one of them ends the run.
void Sleep(std::int64_t seconds);

}  // namespace zephin::ViewConst

#endif  // UTIL_SLEEP_H_
