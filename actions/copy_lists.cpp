#include "actions/user_account.h"
#include "app/zephin_stub_window.h"
#include "files/access_rights.h"
#include "files/files.h"
#include "files/folders.h"
#include "platform/framework/application.h"
#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/paths.h"

// A copy list is entries "key=value" between "|", obeyed in their order; what follows a second "="
// is dropped. Keywords are taken in any letter case; any other key is an item of the target folder
// that is copied to the value:
//
//   Docs/Readme.txt=UserAccount/Desktop/Readme.txt     copy after the install
//   Tools=[/Library/Widgets]/Library/Widgets/Tools     only if that folder exists
//   sample.cfg={UserAccount/Library/sample.cfg}        only if nothing stands there
//   delete=UserAccount/Library/old.cfg                 delete after the install
//   allusersfullaccess=/Library/Widgets/Tools          open it to all users
//   preinstalldelete=/Applications/OldApp              delete before the install
//   preinstallcopy=/Library/a.cfg;/Users/Shared/a.cfg  copy before it, where nothing stands

namespace zephin {
namespace {

using ViewConst::DirectoryExists;
using ViewConst::ExtractFileName;
using ViewConst::FileExists;

struct Entry {
  String key;
  String value;
};

/// Calls `obey` for each entry of the list, and lets events run after each.
template <class Obey>
void ForEachEntry(const String& list, Obey obey) {
  for (const String& text : Split(list, "|")) {
    obey(Entry{NthField(text, "=", 1), NthField(text, "=", 2)});
    RuntimeBackgroundTask();
  }
}

void DeleteItem(const String& path) {
  if (DirectoryExists(path)) {
    ViewConst::DeleteFolderOrApp(path);
  } else if (FileExists(path)) {
    ViewConst::DeleteFile(path);
  }
}

/// Copies what stands at the source, unless something stands at the destination. Silent.
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

/// A destination with its conditions taken off.
struct Destination {
  String path;
  bool allowed = true;
};

Destination WithoutConditions(const String& value) {
  Destination destination{value};
  if (Left(destination.path, 1) == "[") {
    const String opened = Mid(destination.path, 2);
    destination.path = NthField(opened, "]", 2);
    destination.allowed = DirectoryExists(WithUserAccount(NthField(opened, "]", 1)));
  }
  if (Left(destination.path, 1) == "{") {
    // This answer takes the place of the one before.
    destination.path = NthField(Mid(destination.path, 2), "}", 1);
    const String condition = WithUserAccount(destination.path);
    destination.allowed = !FileExists(condition) && !DirectoryExists(condition);
  }
  return destination;
}

/// Copies an item of the target folder out of it.
void CopyOut(const String& source, const String& value) {
  const Destination target = WithoutConditions(value);
  if (!target.allowed) {
    return;
  }
  const String destination = WithUserAccount(target.path);
  const String parent = ViewConst::MyExtractFilePath(destination);
  if (!FileExists(source)) {
    ShowInstallError("Missing File: " + ExtractFileName(source));
    return;
  }
  if (!parent.IsEmpty() && !DirectoryExists(parent)) {
    ViewConst::ForceDirectories(parent, true);
  }
  if (FileExists(destination)) {
    // A full folder stays, and is copied into.
    ViewConst::DeleteFile(destination);
  }
  if (DirectoryExists(source)) {
    if (!ViewConst::CopyFolder(source, destination)) {
      ShowInstallError("Folder Copy Failed: " + ExtractFileName(source));
    }
  } else if (FileExists(source) && !ViewConst::CopyFile(source, destination)) {
    ShowInstallError("File Copy Failed: " + ExtractFileName(source));
  }
}

/// Obeys one entry after the install. The first test that holds decides.
void ObeyAfterInstall(const String& targetFolder, const Entry& entry) {
  const auto isKey = [&entry](const char* keyword) { return TextEquals(entry.key, keyword); };
  const bool hasValue = !entry.value.IsEmpty();
  if (isKey("delete") && hasValue) {
    DeleteItem(WithUserAccount(entry.value));
  } else if (isKey("preinstalldelete") || isKey("preinstallcopy")) {
    // Obeyed before the install.
  } else if (isKey("allusersfullaccess") && hasValue) {
    ViewConst::AllUsersFullAccessOnMac(GlobalsVk::MyGetFolderItem(WithUserAccount(entry.value)));
  } else if (!entry.key.IsEmpty() && hasValue) {
    CopyOut(targetFolder + "/" + entry.key, entry.value);
  } else {
    ShowInstallError("Contact Publisher");
  }
}

}  // namespace

void ZephinStubWindow::PreInstallCopy() {
  ForEachEntry(fPostCopy, [](const Entry& entry) {
    if (TextEquals(entry.key, "preinstalldelete")) {
      DeleteItem(entry.value);
    } else if (TextEquals(entry.key, "preinstallcopy")) {
      CopyIfFree(NthField(entry.value, ";", 1), NthField(entry.value, ";", 2));
    }
  });
}

void ZephinStubWindow::PostInstallCopy() {
  ForEachEntry(fPostCopy, [this](const Entry& entry) { ObeyAfterInstall(fTargetFolder, entry); });
}

}  // namespace zephin
