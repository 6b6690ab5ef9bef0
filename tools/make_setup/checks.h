#ifndef TOOLS_MAKE_SETUP_CHECKS_H_
#define TOOLS_MAKE_SETUP_CHECKS_H_

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tools/make_setup/files.h"
#include "tools/make_setup/setup_file.h"

/// What a record can hold and the installer can read, but every user would suffer from. Each fault
/// is a warning that begins with the field and says what is allowed.
namespace zephin::make_setup {

using Warn = std::function<void(const std::string& warning)>;

/// Checks everything that is known before the packing. `payload` lists the tree that is packed, of
/// a patch that of the patch.
void CheckSetup(const Setup& setup, const std::vector<TreeItem>& payload, const Warn& warn);

Contents ContentsOf(const std::vector<TreeItem>& tree);

/// Checks that a disk of ordinary speed expands a payload of `archive` bytes in the time that the
/// installer waits, which depends on the archive's length only.
void CheckExpansionTime(const Contents& contents, std::uint64_t archive, const Warn& warn);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_CHECKS_H_
