#ifndef APP_MENU_BAR_H_
#define APP_MENU_BAR_H_

#include "platform/framework/menu.h"

namespace zephin {

/// The menus of the application and its window. Quit acts through the framework, and the Edit items
/// act on the field that has the focus.
Ref<MenuBar> MakeMenuBar1();

}  // namespace zephin

#endif  // APP_MENU_BAR_H_
