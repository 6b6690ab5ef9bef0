#include "actions/path_tokens.h"

#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "platform/bundle/bundle_location.h"
#include "platform/framework/folder_item.h"
#include "platform/framework/session.h"
#include "platform/framework/text.h"
#include "setup/path_tokens.h"
#include "util/texts.h"

namespace zephin {
namespace {

String UserHomePath() {
  return SpecialFolder::UserHome()->NativePath();
}

String Resolved(PathToken token, const String& rest, const String& targetFolder) {
  switch (token) {
    case PathToken::UserAccount:
      return UserHomePath() + "/" + rest;
    case PathToken::InstallFolder:
      // Always in the applications folder: the user selects another folder only later.
      return ViewConst::GetApplicationFolderPath() + targetFolder + "/" + rest;
    case PathToken::SetupFolder:
      return ViewConst::GetApplicationPath() + rest;
    case PathToken::FixedPath:
      break;
  }
  return rest;
}

}  // namespace

String WithUserAccount(const String& path) {
  return ViewConst::Pos(kUserAccountToken, path) == 1
             ? UserHomePath() + "/" + Mid(path, Len(kUserAccountToken) + 1)
             : path;
}

bool ZephinStubWindow::SpecialPath(String& path) {
  Clipboard clipboard;
  bool found = false;
  for (const auto& [token, text] : kPathTokens) {
    if (ViewConst::Pos(text, path) != 1) {
      continue;
    }
    const String rest = Mid(path, Len(text) + 1);
    // For every token alike: the helper reads from the clipboard where an item of this name would
    // be beside the installer, and finds the installer's folder that way.
    clipboard.SetText(ViewConst::GetApplicationPath() + rest);
    path = Resolved(token, rest, fTargetFolder);
    found = true;
  }
  return found;
}

}  // namespace zephin
