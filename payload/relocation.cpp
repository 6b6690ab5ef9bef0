#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "files/folders.h"
#include "platform/bundle/bundle_location.h"
#include "platform/framework/application.h"
#include "platform/framework/folder_item.h"
#include "platform/framework/session.h"
#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/paths.h"
#include "util/texts.h"

namespace zephin {
namespace {

using ViewConst::MyAbsolutePath;
using ViewConst::Pos;

/// Path of the running bundle; empty if the executable's path holds no ".app". It ends with the
/// first ".app" in that path, even if that is part of the name of a folder above the bundle.
String RunningBundle() {
  constexpr std::int64_t kEndingLength = 4;
  const String path = MyAbsolutePath(Application::Current().ExecutableFile());
  const std::int64_t position = Pos(".app", path);
  return position == 0 ? "" : Left(path, position + kEndingLength - 1);
}

/// Copies the bundle into a new folder of the temporary folder and launches the copy. A failed copy
/// is not reported.
void LaunchCopy(const String& bundle) {
  const String folder =
      MyAbsolutePath(SpecialFolder::Temporary()) + Str(ViewConst::gRandom->InRange(1000, 9999));
  ViewConst::ForceDirectories(folder, false);
  const String copy = folder + ViewConst::GetPathSeparator() + ViewConst::ExtractFileName(bundle);
  // An earlier run may have drawn the same number.
  ViewConst::DeleteFolderOrApp(copy);
  if (ViewConst::CopyFile(bundle, copy)) {
    GlobalsVk::MyGetFolderItem(copy)->Launch(true);
  }
}

}  // namespace

bool ZephinStubWindow::RunningRelocatedInstaller() const {
  return Pos(MyAbsolutePath(SpecialFolder::Temporary()), ViewConst::GetApplicationPath()) >= 1;
}

bool ZephinStubWindow::RelocateInstaller(const String& firstSplitPart) {
  if (RunningRelocatedInstaller() || !ViewConst::FileExists(firstSplitPart)) {
    return false;
  }
  const String bundle = RunningBundle();
  // The copy takes from the clipboard where the other pieces are.
  Clipboard().SetText(ViewConst::ExtractFilePath(bundle));
  LaunchCopy(bundle);
  return true;
}

}  // namespace zephin
