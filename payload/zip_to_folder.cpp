#include "payload/zip_to_folder.h"

#include "files/files.h"
#include "files/folders.h"
#include "platform/framework/shell.h"
#include "util/paths.h"

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
