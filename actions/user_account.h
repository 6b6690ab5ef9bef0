#ifndef ACTIONS_USER_ACCOUNT_H_
#define ACTIONS_USER_ACCOUNT_H_

#include "platform/framework/string.h"

namespace zephin {

/// Stands at the start of a path for the user's home folder.
inline constexpr const char* kUserAccountToken = "UserAccount/";

/// The home folder's path, without a trailing separator.
String UserHomePath();

/// The path with a leading "UserAccount/", in any letter case, made the home folder; any other path
/// as it is.
String WithUserAccount(const String& path);

}  // namespace zephin

#endif  // ACTIONS_USER_ACCOUNT_H_
