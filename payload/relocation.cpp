#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "files/folders.h"
#include "platform/bundle/bundle_location.h"
#include "platform/framework/application.h"
#include "platform/framework/clipboard.h"
#include "platform/framework/special_folder.h"
#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/paths.h"
#include "util/text_search.h"

namespace zephin {
namespace {

using ViewConst::ExtractFileName;
using ViewConst::GetApplicationPath;
using ViewConst::MyAbsolutePath;
using ViewConst::Pos;

/// The bundle's path ends with the first ".app" of the executable's path, even if that is the name
/// of a folder above it.
String RunningBundle() {
  constexpr std::int64_t kEndingLength = 4;
  const String path = MyAbsolutePath(Application::Current().ExecutableFile());
  const std::int64_t position = Pos(".app", path);
  return position == 0 ? "" : Left(path, position + kEndingLength - 1);
}

}  // namespace

bool ZephinStubWindow::RunningRelocatedInstaller() const {
  return Pos(MyAbsolutePath(SpecialFolder::Temporary()), GetApplicationPath()) >= 1;
}

bool ZephinStubWindow::RelocateInstaller(const String& firstSplitPart) {
  Clipboard clipboard;
  const String temporary = MyAbsolutePath(SpecialFolder::Temporary());
  if (Pos(temporary, GetApplicationPath()) > 0 || !ViewConst::FileExists(firstSplitPart)) {
    return false;
  }
  const String bundle = RunningBundle();
  // This is how the copy learns where the further pieces lie.
  clipboard.SetText(ViewConst::ExtractFilePath(bundle));
  const String folder = temporary + Str(ViewConst::gRandom->InRange(1000, 9999));
  ViewConst::ForceDirectories(folder, false);
  const String copy = folder + ViewConst::GetPathSeparator() + ExtractFileName(bundle);
  ViewConst::DeleteFolderOrApp(copy);
  if (ViewConst::CopyFile(bundle, copy)) {
    const Ref<FolderItem> item = GlobalsVk::MyGetFolderItem(copy);
    item->Launch(true);
  }
  return true;
}

}  // namespace zephin
