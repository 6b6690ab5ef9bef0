#include "platform/bundle/bundle_location.h"

#include "platform/bundle/gatekeeper_dialog.h"
#include "platform/framework/application.h"
#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/paths.h"
#include "util/texts.h"

namespace zephin::ViewConst {
namespace {

constexpr std::int64_t kContentsLength = 8;

}  // namespace

String GetApplicationPath() {
  const String executable = Application::Current().ExecutableFile()->NativePath();
  // Without "/Contents" this is the text before position 0: empty.
  const String bundle = Left(executable, ContentsPosition(executable) - 1);
  String folder = ExtractFilePath(bundle);
  if (Pos("AppTranslocation", folder) > 0 && !gIgnoreTranslocationError) {
    OfferToClearTranslocation();
  }
  return folder;
}

Ref<FolderItem> ContentsFolder() {
  const String path = MyAbsolutePath(Application::Current().ExecutableFile());
  const std::int64_t position = ContentsPosition(path);
  return position == 0 ? nullptr
                       : GlobalsVk::MyGetFolderItem(Left(path, position + kContentsLength));
}

}  // namespace zephin::ViewConst
