#ifndef PLATFORM_FRAMEWORK_FILES_MOVE_TREE_H_
#define PLATFORM_FRAMEWORK_FILES_MOVE_TREE_H_

#include <string>

namespace zephin {

/// Moves what stands at `from` to `to`, on another file system, where nothing may stand: copies it
/// with all that it holds (links as links, rights but for set-id bits, owner and times as far as
/// the system lets it), then removes what was copied and nothing else. It lets events run. 0, or a
/// code of the system: if the copy fails, what was made at `to` is taken back; if an item can't be
/// removed, both trees stand.
int MoveTree(const std::string& from, const std::string& to);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_MOVE_TREE_H_
