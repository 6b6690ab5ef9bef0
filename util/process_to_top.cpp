#include "util/process_to_top.h"

#include "platform/framework/application.h"

namespace zephin::ViewConst {

void MyProcessToTop() {
  Application::Current().Session().BringToFront();
}

}  // namespace zephin::ViewConst
