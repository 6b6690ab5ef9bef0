#include "payload/zip_file.h"

#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "files/folders.h"
#include "platform/framework/application.h"
#include "platform/framework/machine.h"
#include "platform/framework/shell.h"
#include "setup/limits.h"
#include "util/paths.h"
#include "util/process.h"

namespace zephin {
namespace {

/// One release of the system expands at half the speed of the others: the one with the minor
/// version 13. The major version must be known, but its value is ignored.
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
  // The expansion gives no signal of its end, so the bar shows the time and always fills up.
  do {
    bar->SetValue(Ticks() - start);
    bar->Refresh(true);
    Application::Current().DoEvents(kRepaintMilliseconds);
    RuntimeBackgroundTask();
  } while (start + duration >= Ticks());
}

void ZephinStubWindow::ZipFileDelete(const String& zipPath, const Ref<FolderItem>& launchItem) {
  // The program doesn't have to wait for the deletion, which may take any number of attempts.
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

namespace zephin::ViewConst {

bool ZipFileToFolder(const String& zipPath, const String& folderPath, bool deleteExisting) {
  constexpr int kSynchronous = 0;
  Shell shell;
  if (deleteExisting && DirectoryExists(folderPath)) {
    DeleteFolderOrApp(folderPath);
  }
  const String destination = GlobalsVk::MyGetFolderItem(folderPath)->ShellPath();
  const String source = GlobalsVk::MyGetFolderItem(zipPath)->ShellPath();
  shell.SetMode(kSynchronous);
  shell.Execute("ditto -xk " + source + " " + destination);
  return shell.ErrorCode() == 0;
}

}  // namespace zephin::ViewConst
