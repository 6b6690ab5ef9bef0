#ifndef ACTIONS_PATH_TOKENS_H_
#define ACTIONS_PATH_TOKENS_H_

#include "platform/framework/string.h"

/// The paths on this machine for the tokens that a publisher's paths begin with. The tokens
/// themselves are in setup/path_tokens.h. The main window's SpecialPath handles all four.
namespace zephin {

/// Replaces a leading "UserAccount/", in any letter case, by the path of the user's home folder and
/// a separator. Any other path is returned unchanged.
String WithUserAccount(const String& path);

}  // namespace zephin

#endif  // ACTIONS_PATH_TOKENS_H_
