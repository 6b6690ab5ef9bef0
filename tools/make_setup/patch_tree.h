#ifndef TOOLS_MAKE_SETUP_PATCH_TREE_H_
#define TOOLS_MAKE_SETUP_PATCH_TREE_H_

#include <filesystem>

namespace zephin::make_setup {

/// Makes the payload of a patch in the new folder `patch`. The installer merges it into a folder
/// that has the contents of `oldTree`, which then has those of `newTree`:
///
///   new or changed file (content or permissions)   the file, at its place
///   deleted file                                   an empty file "name*Delete*" at its place
///   deleted folder at the root of the tree         an empty folder "name*Delete*"
///
/// Two equal trees give an empty patch. Permissions of folders are not compared. Throws SetupError,
/// which begins with the item's path, for what the installer can't merge:
/// - a new folder without files, or with files directly in it if its name ends in ".app"
/// - a deleted folder below the root, which would stay behind, empty
/// - a hidden file that is new, changed or deleted
/// - a link that is new or changed
/// - an item that becomes one of another kind
/// - a name that contains "*Delete*" or has no room for it
void MakePatchTree(const std::filesystem::path& oldTree, const std::filesystem::path& newTree,
                   const std::filesystem::path& patch);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PATCH_TREE_H_
