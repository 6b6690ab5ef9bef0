#include "app/zephin_stub_window.h"
#include "files/access_rights.h"
#include "files/files.h"
#include "payload/expansion_time.h"
#include "platform/framework/application.h"
#include "platform/framework/machine.h"
#include "util/process.h"

namespace zephin {
namespace {

/// One release of the system expands at half the speed of the others: the one whose minor version
/// is 13, whatever its major one.
bool SystemIsSlow() {
  constexpr std::int64_t kSlowRelease = 13;
  std::int64_t major = 0;
  std::int64_t minor = 0;
  return System::Gestalt("sys1", major) && System::Gestalt("sys2", minor) && minor == kSlowRelease;
}

}  // namespace

void ZephinStubWindow::ZipFileProcess(const String& /*zipPath*/, const Ref<FolderItem>& zipItem) {
  constexpr int kRepaintMilliseconds = 10;
  const bool slow = SystemIsSlow();
  const std::int64_t duration = ExpansionTicks(zipItem->Length(), slow);
  const Ref<ProgressBar> bar = ProgressBar1();
  bar->SetMaximum(duration);
  bar->SetVisible(true);
  const std::int64_t start = Ticks();
  // The expansion gives no signal, so the bar knows the time alone and is never cut short.
  do {
    bar->SetValue(Ticks() - start);
    bar->Refresh(true);
    Application::Current().DoEvents(kRepaintMilliseconds);
    RuntimeBackgroundTask();
  } while (start + duration >= Ticks());
}

void ZephinStubWindow::ZipFileDelete(const String& zipPath, const Ref<FolderItem>& launchItem) {
  if (!launchItem.IsNil()) {
    launchItem->Launch(true);
  }
  while (ViewConst::FileExists(zipPath)) {
    ViewConst::AllUsersFullAccess(zipPath);
    ViewConst::DeleteFile(zipPath);
    ViewConst::Sleep(1);
    RuntimeBackgroundTask();
  }
}

}  // namespace zephin
