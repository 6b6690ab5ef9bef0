#include "actions/path_tokens.h"
#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "files/folders.h"
#include "platform/framework/application.h"
#include "platform/framework/text.h"
#include "setup/lists.h"
#include "util/globals.h"
#include "util/paths.h"

namespace zephin {
namespace {

using ViewConst::DirectoryExists;
using ViewConst::ExtractFileName;
using ViewConst::FileExists;

/// Deletes a file or a folder with all it holds; of a link only the link itself.
void DeleteItem(const String& path) {
  if (DirectoryExists(path)) {
    ViewConst::DeleteFolderOrApp(path);
  } else if (FileExists(path)) {
    ViewConst::DeleteFile(path);
  }
}

/// Copies a file or a folder, unless the destination exists. Errors are ignored.
void CopyIfFree(const String& source, const String& destination) {
  const bool sourceIsFolder = DirectoryExists(source);
  const bool sourceIsFile = !sourceIsFolder && FileExists(source);
  if (DirectoryExists(destination) || FileExists(destination)) {
    return;
  }
  if (sourceIsFolder) {
    ViewConst::CopyFolder(source, destination);
  } else if (sourceIsFile) {
    ViewConst::CopyFile(source, destination);
  }
}

void ShowInstallError(const String& detail) {
  MsgBox("Install Error" + ViewConst::gLineBreak + ViewConst::gLineBreak + detail);
}

bool Exists(const String& path) {
  return FileExists(path) || DirectoryExists(path);
}

bool ConditionHolds(const CopyCommand& command) {
  switch (command.condition) {
    case CopyCondition::FolderExists:
      return DirectoryExists(WithUserAccount(command.conditionFolder));
    case CopyCondition::NothingThere:
      return !Exists(WithUserAccount(command.destination));
    case CopyCondition::None:
      break;
  }
  return true;
}

/// Prepares the destination of a copy: creates the folder that holds it, and deletes a file or an
/// empty folder in its place.
void MakeRoom(const String& destination) {
  const String parent = ViewConst::MyExtractFilePath(destination);
  if (!parent.IsEmpty() && !DirectoryExists(parent)) {
    ViewConst::ForceDirectories(parent, true);
  }
  if (FileExists(destination)) {
    // A folder that isn't empty stays, and a folder is copied into it.
    ViewConst::DeleteFile(destination);
  }
}

/// Copies an item of the target folder to another place. Each failure is reported.
void CopyOut(const String& source, const CopyCommand& command) {
  if (!ConditionHolds(command)) {
    return;
  }
  if (!FileExists(source)) {
    ShowInstallError("Missing File: " + ExtractFileName(source));
    return;
  }
  const String destination = WithUserAccount(command.destination);
  MakeRoom(destination);
  if (DirectoryExists(source)) {
    if (!ViewConst::CopyFolder(source, destination)) {
      ShowInstallError("Folder Copy Failed: " + ExtractFileName(source));
    }
  } else if (FileExists(source) && !ViewConst::CopyFile(source, destination)) {
    ShowInstallError("File Copy Failed: " + ExtractFileName(source));
  }
}

void ObeyAfterInstall(const String& targetFolder, const CopyCommand& command) {
  switch (command.verb) {
    case CopyVerb::Delete:
      DeleteItem(WithUserAccount(command.path));
      break;
    case CopyVerb::AllUsersFullAccess:
      ViewConst::AllUsersFullAccessOnMac(GlobalsVk::MyGetFolderItem(WithUserAccount(command.path)));
      break;
    case CopyVerb::Copy:
      CopyOut(targetFolder + "/" + command.path, command);
      break;
    case CopyVerb::Malformed:
      ShowInstallError("Contact Publisher");
      break;
    case CopyVerb::PreInstallDelete:
    case CopyVerb::PreInstallCopy:
      // Done before the install, and never an error here, even without a value.
      break;
  }
}

/// Calls `obey` for each command of the list in its order; events run after each.
template <class Obey>
void ForEachCommand(const String& list, Obey obey) {
  for (const CopyCommand& command : ReadCopyList(list)) {
    obey(command);
    RuntimeBackgroundTask();
  }
}

}  // namespace

void ZephinStubWindow::PreInstallCopy() {
  // These paths are absolute: no token is replaced in them.
  ForEachCommand(fPostCopy, [](const CopyCommand& command) {
    if (command.verb == CopyVerb::PreInstallDelete) {
      DeleteItem(command.path);
    } else if (command.verb == CopyVerb::PreInstallCopy) {
      CopyIfFree(command.path, command.destination);
    }
  });
}

void ZephinStubWindow::PostInstallCopy() {
  ForEachCommand(fPostCopy,
                 [this](const CopyCommand& command) { ObeyAfterInstall(fTargetFolder, command); });
}

}  // namespace zephin
