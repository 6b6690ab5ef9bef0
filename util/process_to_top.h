#ifndef UTIL_PROCESS_TO_TOP_H_
#define UTIL_PROCESS_TO_TOP_H_

namespace zephin::ViewConst {

/// Brings this process to the front. A failure isn't looked at.
void MyProcessToTop();

}  // namespace zephin::ViewConst

#endif  // UTIL_PROCESS_TO_TOP_H_
