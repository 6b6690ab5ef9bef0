#include "tests/support/stub_run.h"

#include "app/app.h"
#include "app/menu_bar.h"
#include "app/startup.h"
#include "dialogs/message_modal.h"
#include "platform/framework/text.h"
#include "tools/make_setup/payload.h"

namespace zephin::test {
namespace fs = std::filesystem;

namespace {

/// The main window as it is before its open event.
class UnstartedWindow : public ZephinStubWindow {
 public:
  void Event_Open() override {}
};

}  // namespace

struct StubRun::Bare {
  std::unique_ptr<App> app;
  Ref<UnstartedWindow> window;
};

StubRun::StubRun() {
  for (const char* folder : {"home", "System", "Applications", "Temporary"}) {
    fs::create_directory(scratch / folder);
  }
  WriteFile(Bundle() / "Contents/MacOS/Setup", "the stub");
  fs::create_directory(Resources());
  fs::create_directory(Bundle() / "Contents/Helpers");
  fs::create_symlink(ZEPHIN_DITTO, Bundle() / "Contents/Helpers/ditto");
  machine.executable = Bundle() / "Contents/MacOS/Setup";
  machine.systemFolder = scratch / "System";
  machine.userHome = Home();
  machine.desktopFolder = Home() / "Desktop";
  machine.temporaryFolder = scratch / "Temporary";
  machine.helpersFolder = Bundle() / "Contents/Helpers";
  machine.memory = 8000;
  machine.systemMajor = 10;
  machine.systemMinor = 15;
}

StubRun::~StubRun() {
  CloseImplicitMessageModal();
  bare_.reset();
}

void StubRun::SetPayload(const fs::path& folder, const std::string& topName) const {
  make_setup::WritePayload(folder, topName, Resources() / "Data2");
}

int StubRun::Run() {
  make_setup::WriteRecord(record, Resources());
  return RunAsItStands();
}

int StubRun::RunAsItStands() {
  try {
    _Main(desktop, machine);
  } catch (const RunEnded& end) {
    return end.status;
  }
  return -1;
}

ZephinStubWindow& StubRun::BareWindow() {
  if (bare_ == nullptr) {
    bare_ = std::make_unique<Bare>();
    bare_->app = std::make_unique<App>(desktop, machine);
    bare_->app->SetMenuBar(MakeMenuBar1());
    bare_->app->Event_Open();
    bare_->window = MakeWindow<UnstartedWindow>();
    for (std::size_t i = 0; i < make_setup::kLabelCount; ++i) {
      bare_->window->fLabels.Append("");
    }
  }
  return *bare_->window;
}

int StubRun::Call(const std::function<void()>& body) {
  try {
    Application::Current().CallHandler(body);
  } catch (const RunEnded& end) {
    return end.status;
  }
  return -1;
}

}  // namespace zephin::test
