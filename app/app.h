#ifndef APP_APP_H_
#define APP_APP_H_

#include "platform/framework/application.h"

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

}  // namespace zephin

#endif  // APP_APP_H_
