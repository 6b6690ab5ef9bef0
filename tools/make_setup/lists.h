#ifndef TOOLS_MAKE_SETUP_LISTS_H_
#define TOOLS_MAKE_SETUP_LISTS_H_

#include <string>
#include <vector>

#include "setup/lists.h"

/// The inverse of ReadSelectionList and ReadCopyList (setup/), where the grammars are. No separator
/// can be escaped, so an entry that the installer would read differently throws SetupError.
namespace zephin::make_setup {

/// The list of choices or options. The tips may be empty.
std::string SelectionList(const std::vector<SelectionEntry>& entries);

/// The list of commands. Also throws SetupError for a path that the installer can't use: an item to
/// copy must be named below the target folder; every other path must be absolute or, after the
/// install, begin with "UserAccount/".
std::string CopyList(const std::vector<CopyCommand>& commands);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_LISTS_H_
