#include <array>

#include "actions/user_account.h"
#include "app/zephin_stub_window.h"
#include "platform/bundle/bundle_location.h"
#include "platform/framework/clipboard.h"
#include "platform/framework/text.h"
#include "util/text_search.h"

// A helper program's name may begin with a token that says where it lies, in any letter case:
//
//   UserAccount/Tools/x   in the user's home folder
//   InstallFolder/x       in /Applications/ and the folder to be installed
//   FixedPath//usr/bin/x  at that path; the token's own slash goes
//   SetupFolder/x         beside the installer

namespace zephin {
namespace {

/// The four tokens in the order of their tests. Each sees the text as the ones before have left it.
enum class Token { UserAccount, InstallFolder, FixedPath, SetupFolder };

struct TokenName {
  Token token;
  const char* name;
};

constexpr std::array kTokens{
    TokenName{Token::UserAccount, kUserAccountToken},
    TokenName{Token::InstallFolder, "InstallFolder/"},
    TokenName{Token::FixedPath, "FixedPath/"},
    TokenName{Token::SetupFolder, "SetupFolder/"},
};

String Resolved(Token token, const String& rest, const String& targetFolder) {
  switch (token) {
    case Token::UserAccount:
      return UserHomePath() + "/" + rest;
    case Token::InstallFolder:
      // Whatever folder the user picks later.
      return "/Applications/" + targetFolder + "/" + rest;
    case Token::SetupFolder:
      return ViewConst::GetApplicationPath() + rest;
    case Token::FixedPath:
      break;
  }
  return rest;
}

}  // namespace

bool ZephinStubWindow::SpecialPath(String& path) {
  Clipboard clipboard;
  bool found = false;
  for (const auto& [token, name] : kTokens) {
    if (ViewConst::Pos(name, path) != 1) {
      continue;
    }
    const String rest = Mid(path, Len(name) + 1);
    // Whatever the token means, the helper is told where an item of this name would lie beside the
    // installer.
    clipboard.SetText(ViewConst::GetApplicationPath() + rest);
    path = Resolved(token, rest, fTargetFolder);
    found = true;
  }
  return found;
}

}  // namespace zephin
