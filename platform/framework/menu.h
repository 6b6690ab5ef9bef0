#ifndef PLATFORM_FRAMEWORK_MENU_H_
#define PLATFORM_FRAMEWORK_MENU_H_

#include <string>
#include <vector>

#include "platform/framework/string.h"

namespace zephin {

/// What the framework does of itself when an item is chosen.
enum class MenuCommand { None, Quit, Undo, Cut, Copy, Paste, Clear, SelectAll };

struct MenuItem {
  std::string name;
  String text;      ///< "&" stands before the letter of the key; "-" is a separator.
  String shortcut;  ///< Such as "Cmd+Q", where Cmd is the platform's command key; may be empty.
  MenuCommand command = MenuCommand::None;
};

struct Menu {
  std::string name;
  String text;
  std::vector<MenuItem> items;
};

/// The menus of a program or a window. They are not shown in the windows of this program; their
/// shortcuts act all the same.
struct MenuBar {
  std::vector<Menu> menus;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_MENU_H_
