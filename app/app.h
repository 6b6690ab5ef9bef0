#ifndef APP_APP_H_
#define APP_APP_H_

#include "platform/framework/application.h"
#include "platform/framework/desktop.h"
#include "platform/framework/machine.h"
#include "platform/framework/menu.h"

namespace zephin {

/// The installer as an application: sets the values that every window relies on.
class App : public Application {
 public:
  using Application::Application;
  /// Does nothing of its own.
  void Constructor() {}
  /// Does nothing of its own.
  void ResetWrappedApp() {}
  void Event_Open() override;
};

/// The application's menus: File with Quit, and Edit.
Ref<MenuBar> MakeMenuBar1();

/// The process from its runtime's initialisation to its end: makes the application on that desktop
/// and machine, opens its main window and runs the event loop. Ends by the desktop's EndRun, or
/// returns when the session ends the loop.
void _Main(Desktop& desktop, const Machine& machine);

}  // namespace zephin

#endif  // APP_APP_H_
