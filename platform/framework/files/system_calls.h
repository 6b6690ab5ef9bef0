#ifndef PLATFORM_FRAMEWORK_FILES_SYSTEM_CALLS_H_
#define PLATFORM_FRAMEWORK_FILES_SYSTEM_CALLS_H_

#include <cstdint>

// What work on files needs and each system has in a call of its own. For the sources of this
// folder.

namespace zephin {

class FileDescriptor;

/// Renames only if nothing stands at `to`. 0, or a code: EEXIST if something does.
[[nodiscard]] int RenameOntoNothing(const char* from, const char* to);

/// Gives an item these rights, but never through a link, even one that has just been put there.
/// Silent.
void ChangeRights(const char* path, unsigned rights);

/// Has the system copy up to `count` bytes from file to file without a way through this process,
/// each from its present position. The number of bytes that it has copied; 0 at the end of the file
/// and where it can't or doesn't.
std::int64_t CopyBySystem(const FileDescriptor& source, const FileDescriptor& target,
                          std::int64_t count);

/// Gives the disk the room of `count` bytes from `position` on of a file that has no name any more;
/// does nothing to one that somebody may still open, and where the file system can't. Silent.
void GiveBackRoom(const FileDescriptor& file, std::int64_t position, std::int64_t count);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_SYSTEM_CALLS_H_
