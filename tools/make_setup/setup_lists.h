#ifndef TOOLS_MAKE_SETUP_SETUP_LISTS_H_
#define TOOLS_MAKE_SETUP_SETUP_LISTS_H_

#include <filesystem>
#include <string>
#include <vector>

#include "tools/make_setup/fields.h"
#include "tools/make_setup/setup_file.h"

// The parts of setup.json that are lists. All throw SetupError with the field's name and the
// number of the entry.

namespace zephin::make_setup {

/// A list of names; empty where the field is not there.
std::vector<std::string> ReadNames(Fields& setup, const std::string& field);

/// "fInstallChoices" and "fInstallOptions", each up to ten entries such as
///
///   { "caption": "Light", "source": "choices/light", "folder": "Themes", "tip": "Dark on white" }
///   { "caption": "Fonts", "source": "https://a.example/fonts.zip", "content": "options/fonts" }
///
/// `source` is a folder, which is packed into the bundle, or an option's address; `content` is
/// then the folder whose archive shall lie there. Without `folder` the target folder receives the
/// content.
void ReadSelections(Fields& setup, const std::filesystem::path& folder, Setup& made);

/// "fPostCopy", commands in the order of work:
///
///   { "copy": "Tools", "to": "/opt/tools", "ifFolder": "/opt" }
///   { "copy": "a.cfg", "to": "UserAccount/a.cfg", "ifNothingThere": true }
///   { "delete": "UserAccount/old.cfg" }, { "allUsersFullAccess": "/opt/tools" }
///   { "preInstallDelete": "/tmp/old" }, { "preInstallCopy": "/tmp/a", "to": "/tmp/b" }
std::string ReadCopyList(Fields& setup);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_SETUP_LISTS_H_
