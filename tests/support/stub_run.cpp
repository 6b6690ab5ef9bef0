#include "tests/support/stub_run.h"

#include "app/app.h"
#include "dialogs/message_modal.h"
#include "platform/framework/text.h"
#include "tools/make_setup/payload.h"
#include "tools/make_setup/record_writer.h"

namespace zephin::test {
namespace fs = std::filesystem;

namespace {

/// The main window before its open event.
class UnstartedWindow : public ZephinStubWindow {
 public:
  void Event_Open() override {}
};

/// The exit status of `run`, or -1 if it returns.
int StatusOf(const std::function<void()>& run) {
  try {
    run();
  } catch (const RunEnded& end) {
    return end.status;
  }
  return -1;
}

}  // namespace

Array<String> Captions(const std::map<Caption, String>& captions) {
  Array<String> list;
  for (const CaptionRow& row : kCaptions) {
    const auto found = captions.find(row.caption);
    list.Append(found == captions.end() ? String() : found->second);
  }
  return list;
}

StubRun::StubRun() {
  for (const char* folder :
       {"home", "System", "Applications", "Temporary", "Disk/Setup.app/Contents/Resources",
        "Disk/Setup.app/Contents/Helpers"}) {
    fs::create_directories(scratch / folder);
  }
  WriteFile(Bundle() / "Contents/MacOS/Setup", "the stub");
  fs::create_symlink(ZEPHIN_DITTO, Bundle() / "Contents/Helpers/ditto");
  machine.executable = Bundle() / "Contents/MacOS/Setup";
  machine.systemFolder = scratch / "System";
  machine.applicationsFolder = Applications();
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
}

void StubRun::SetPayload(const fs::path& folder, const std::string& topName) const {
  make_setup::WritePayload(folder, topName, Resources() / "Data2");
}

int StubRun::Run() {
  make_setup::WriteRecord(record, Resources());
  return RunAsItStands();
}

int StubRun::RunAsItStands() {
  return StatusOf([this] { _Main(desktop, machine); });
}

ZephinStubWindow& StubRun::BareWindow() {
  if (app_ == nullptr) {
    app_ = std::make_unique<App>(desktop, machine);
    app_->SetMenuBar(MakeMenuBar1());
    app_->Event_Open();
    window_ = MakeWindow<UnstartedWindow>();
    window_->fLabels = Captions();
  }
  return *window_;
}

int StubRun::Call(const std::function<void()>& body) {
  return StatusOf([&body] { Application::Current().CallHandler(body); });
}

}  // namespace zephin::test
