#include "app/menu_bar.h"

namespace zephin {

Ref<MenuBar> MakeMenuBar1() {
  Ref<MenuBar> bar = MakeRef<MenuBar>();
  bar->menus = {
      {"FileMenu", "&File", {{"FileQuit", "&Quit", "Cmd+Q", MenuCommand::Quit}}},
      {"EditMenu",
       "&Edit",
       {{"EditUndo", "&Undo", "Cmd+Z", MenuCommand::Undo},
        {"UntitledMenu1", "-", "", MenuCommand::None},
        {"EditCut", "Cu&t", "Cmd+X", MenuCommand::Cut},
        {"EditCopy", "&Copy", "Cmd+C", MenuCommand::Copy},
        {"EditPaste", "&Paste", "Cmd+V", MenuCommand::Paste},
        {"EditClear", "&Delete", "", MenuCommand::Clear},
        {"UntitledMenu0", "-", "", MenuCommand::None},
        {"EditSelectAll", "Select &All", "Cmd+A", MenuCommand::SelectAll}}},
  };
  return bar;
}

}  // namespace zephin
