#ifndef ACTIONS_PATH_TOKENS_H_
#define ACTIONS_PATH_TOKENS_H_

#include "platform/framework/string.h"

/// What the tokens of a publisher's paths mean on this machine; see setup/path_tokens.h for the
/// tokens. SpecialPath, a method of the main window, resolves all four.
namespace zephin {

/// The home folder's path, without a trailing separator.
String UserHomePath();

/// The path with a leading "UserAccount/", in any letter case, replaced by the home folder; any
/// other path as it is.
String WithUserAccount(const String& path);

}  // namespace zephin

#endif  // ACTIONS_PATH_TOKENS_H_
