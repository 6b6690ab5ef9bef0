#include "app/app.h"

#include <memory>

#include "app/zephin_stub_window.h"
#include "dialogs/message_modal.h"
#include "util/globals.h"

namespace zephin {
namespace {

/// The application and its one implicit window, which is destroyed first.
struct Program {
  std::unique_ptr<App> app;
  Ref<ZephinStubWindow> window;

  ~Program() { CloseImplicitMessageModal(); }
};

void _NewAppInstance(Program& program, Desktop& desktop, const Machine& machine) {
  program.app = std::make_unique<App>(desktop, machine);
  program.app->Constructor();
  program.app->SetVersion({.major = 1});
  program.app->SetMenuBar(MakeMenuBar1());
}

/// Nothing is needed for high resolutions, which the desktop handles, nor for external classes,
/// plug-ins, file types and menu handlers, of which the program has none.
void _EarlyStartup(Program& program, Desktop& desktop, const Machine& machine) {
  _NewAppInstance(program, desktop, machine);
}

void _MakeDefaultView(Program& program) {
  program.window = MakeWindow<ZephinStubWindow>();
}

void _LateStartup(Program& program) {
  _MakeDefaultView(program);
}

}  // namespace

void App::Event_Open() {
  ViewConst::VkAppInit();
  // A translocated bundle is recognised by the main window's open event, so the dialog about
  // translocation stays off.
  ViewConst::gIgnoreTranslocationError = true;
}

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

void _Main(Desktop& desktop, const Machine& machine) {
  Program program;
  _EarlyStartup(program, desktop, machine);
  program.app->CallHandler([&program] {
    // Before the window's own event, since messages there use what this one sets.
    program.app->Event_Open();
    _LateStartup(program);
  });
  desktop.RunEventLoop();
}

}  // namespace zephin
