#ifndef PLATFORM_FRAMEWORK_MENU_H_
#define PLATFORM_FRAMEWORK_MENU_H_

#include <string>
#include <vector>

#include "platform/framework/string.h"

namespace zephin {

/// What the desktop does when an item is chosen: ends the program, or edits the text field that has
/// the focus.
enum class MenuCommand { None, Quit, Undo, Cut, Copy, Paste, Clear, SelectAll };

/// One line of a menu.
struct MenuItem {
  std::string name;
  String text;      ///< "&" precedes the access key; "-" alone is a separator.
  String shortcut;  ///< For example "Cmd+Q", where Cmd is the platform's command key. May be empty.
  MenuCommand command = MenuCommand::None;
};

struct Menu {
  std::string name;
  String text;
  std::vector<MenuItem> items;
};

/// The menus of a program or window. The windows of this program do not show them; only their
/// shortcuts work.
struct MenuBar {
  std::vector<Menu> menus;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_MENU_H_
