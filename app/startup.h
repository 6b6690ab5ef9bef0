#ifndef APP_STARTUP_H_
#define APP_STARTUP_H_

#include "platform/framework/desktop.h"
#include "platform/framework/machine.h"

namespace zephin {

/// The process from its runtime's initialisation to its end: makes the application on that desktop
/// and machine, opens its main window and runs the event loop. Ends by the desktop's EndRun, or
/// returns when the session ends the loop.
void _Main(Desktop& desktop, const Machine& machine);

}  // namespace zephin

#endif  // APP_STARTUP_H_
