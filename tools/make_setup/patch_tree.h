#ifndef TOOLS_MAKE_SETUP_PATCH_TREE_H_
#define TOOLS_MAKE_SETUP_PATCH_TREE_H_

#include <filesystem>

namespace zephin::make_setup {

/// Makes the tree of a patch in `patch`, a folder that must not stand yet. Merged by the stub onto
/// a folder that holds what `oldTree` holds, it gives what `newTree` holds:
///
///   new or changed file (content or permissions)   the file, at its place
///   file that is gone                              an empty file "name*Delete*" at its place
///   folder that is gone, at the root of the tree   an empty folder "name*Delete*"
///
/// Throws SetupError, which names the item, for what a patch can't say: a new folder without files;
/// a folder gone below the root, which would stay behind, empty; a hidden file that comes, changes
/// or goes; a link that comes or changes; an item that becomes one of another kind; files directly
/// in a new folder named "*.app"; a name that holds "*Delete*" or has no room for it. Two equal
/// trees give an empty patch. Permissions of folders are not compared.
void MakePatchTree(const std::filesystem::path& oldTree, const std::filesystem::path& newTree,
                   const std::filesystem::path& patch);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PATCH_TREE_H_
