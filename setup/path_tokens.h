#ifndef SETUP_PATH_TOKENS_H_
#define SETUP_PATH_TOKENS_H_

#include <array>

/// Words that begin a publisher's path and say where it lies, in any letter case. The names of the
/// helper programs know all four, the copy list only the first:
///
///   UserAccount/Tools/x   in the user's home folder
///   InstallFolder/x       in the Applications folder and the folder to be installed
///   FixedPath//usr/bin/x  at that path, without the token's own slash
///   SetupFolder/x         beside the installer
namespace zephin {

enum class PathToken { UserAccount, InstallFolder, FixedPath, SetupFolder };

struct PathTokenRow {
  PathToken token;
  const char* text;  ///< As it is written, with its slash.
};

inline constexpr const char* kUserAccountToken = "UserAccount/";

/// In the order in which a path is tested for them. Each test sees the path as the ones before have
/// left it.
inline constexpr std::array kPathTokens{
    PathTokenRow{PathToken::UserAccount, kUserAccountToken},
    PathTokenRow{PathToken::InstallFolder, "InstallFolder/"},
    PathTokenRow{PathToken::FixedPath, "FixedPath/"},
    PathTokenRow{PathToken::SetupFolder, "SetupFolder/"},
};

}  // namespace zephin

#endif  // SETUP_PATH_TOKENS_H_
