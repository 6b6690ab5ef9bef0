#ifndef PLATFORM_FRAMEWORK_FILES_SYSTEM_CALLS_H_
#define PLATFORM_FRAMEWORK_FILES_SYSTEM_CALLS_H_

#include <cstdint>

// System calls for files that differ from system to system. Only the sources of this wing use them.

namespace zephin {

class FileDescriptor;

/// Renames only if no item exists at `to`. Returns 0 or an error number: EEXIST if one exists.
[[nodiscard]] int RenameOntoNothing(const char* from, const char* to);

/// Sets the permission bits of an item, but never through a link, even one that another process has
/// just put there. Fails silently.
void ChangeRights(const char* path, unsigned rights);

/// Copies up to `count` bytes between files within the system, from and to their current positions.
/// Returns the number of bytes copied; 0 at the end of the file, and if the system cannot do it for
/// these files or fails. The caller then copies by reading and writing.
std::int64_t CopyBySystem(const FileDescriptor& source, const FileDescriptor& target,
                          std::int64_t count);

/// Frees the disk space of `count` bytes from `position` in a file that has been deleted. No effect
/// on a file that still has a name, and where the file system cannot do it. Fails silently.
void GiveBackRoom(const FileDescriptor& file, std::int64_t position, std::int64_t count);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_SYSTEM_CALLS_H_
