#include "selection/placement.h"

#include "files/files.h"
#include "files/folders.h"
#include "platform/framework/application.h"
#include "platform/framework/text.h"
#include "util/paths.h"

namespace zephin {

using ViewConst::GetPathSeparator;

Placement PlaceOf(const String& target, const String& folder, const String& suffix) {
  if (TextEquals(folder, ViewConst::ExtractFileName(target))) {
    return {target + suffix, target};
  }
  // An empty folder name gives the target itself, which exists, so the temporary folder is then
  // inside the target.
  const String inside = target + GetPathSeparator() + folder;
  if (ViewConst::DirectoryExists(inside)) {
    return {inside + suffix, inside};
  }
  return {inside, ""};
}

void Merge(const Placement& placement) {
  if (placement.mergeFolder.IsEmpty()) {
    return;
  }
  const Ref<FolderItem> folder = GlobalsVk::MyGetFolderItem(placement.extractFolder);
  // From the last item to the first, since each move takes one away.
  for (std::int64_t i = folder.IsNil() ? 0 : folder->Count(); i >= 1; --i) {
    const Ref<FolderItem> item = folder->Item(i);
    if (item.IsNil()) {
      continue;
    }
    const String behind = GetPathSeparator() + item->Name();
    const String destination = placement.mergeFolder + behind;
    if (!ViewConst::RenameFile(placement.extractFolder + behind, destination)) {
      MsgBox("Failed to create " + destination);
    }
    RuntimeBackgroundTask();
  }
  ViewConst::DeleteFolderOrApp(placement.extractFolder);
}

}  // namespace zephin
