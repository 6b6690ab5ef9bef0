#ifndef TOOLS_MAKE_SETUP_SETUP_LISTS_H_
#define TOOLS_MAKE_SETUP_SETUP_LISTS_H_

#include <filesystem>
#include <string>
#include <vector>

#include "tools/make_setup/fields.h"
#include "tools/make_setup/setup_file.h"

/// The lists of setup.json. All throw SetupError with the field's name and, from 1, the number of
/// the entry.
namespace zephin::make_setup {

/// A list of names, none of them empty. Empty if the field doesn't exist.
std::vector<std::string> ReadNames(Fields& fields, const std::string& field);

/// Reads "fInstallChoices" and "fInstallOptions" into the record, and the folders that must be
/// packed for them into `setup.archives`. Each list has up to kSelectionRows entries:
///
///   { "caption": "Light", "source": "choices/light", "folder": "Themes", "tip": "Dark on white" }
///   { "caption": "Fonts", "source": "https://a.example/fonts.zip", "content": "options/fonts" }
///
/// `source` is a folder, which is packed into the bundle, or the address of an option; `content` is
/// then the folder whose archive is written beside the bundle. Without `folder` the content goes
/// right into the target folder.
void ReadSelections(Fields& fields, const std::filesystem::path& folder, Setup& setup);

/// The record's form of "fPostCopy", a list of commands in their order:
///
///   { "copy": "Tools", "to": "/opt/tools", "ifFolder": "/opt" }
///   { "copy": "a.cfg", "to": "UserAccount/a.cfg", "ifNothingThere": true }
///   { "delete": "UserAccount/old.cfg" }, { "allUsersFullAccess": "/opt/tools" }
///   { "preInstallDelete": "/tmp/old" }, { "preInstallCopy": "/tmp/a", "to": "/tmp/b" }
String ReadCommands(Fields& fields);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_SETUP_LISTS_H_
