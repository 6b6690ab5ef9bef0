#ifndef PLATFORM_FRAMEWORK_FILES_FOLDER_ITEM_COPY_H_
#define PLATFORM_FRAMEWORK_FILES_FOLDER_ITEM_COPY_H_

struct stat;

namespace zephin {

/// Copies the plain file at `from`, or at the end of the link there, whose state is `source`, to
/// `to`, where nothing may stand, with its rights but for set-id bits and as far as the file system
/// can hold them. It lets events run once for each block. 0, or a code of the system: then nothing
/// is left at `to`; EEXIST tells that something stood there.
[[nodiscard]] int CopyOneFile(const char* from, const struct stat& source, const char* to);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_FOLDER_ITEM_COPY_H_
