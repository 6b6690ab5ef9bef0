#ifndef PLATFORM_FRAMEWORK_FILES_FOLDER_ITEM_COPY_H_
#define PLATFORM_FRAMEWORK_FILES_FOLDER_ITEM_COPY_H_

struct stat;

namespace zephin {

/// Copies the plain file at `from` (or the target of a link there), whose state is `source`, to
/// `to`, where no item may exist. The copy gets its permissions except for set-id bits, as far as
/// the file system supports them. Events are processed after each block of about 4 MB. Returns 0 or
/// an error number: EEXIST if an item exists at `to`. After any other error nothing remains there.
///
/// `FolderItem::CopyFileTo` is defined in the same source; moving between file systems uses this
/// function, too.
[[nodiscard]] int CopyOneFile(const char* from, const struct stat& source, const char* to);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_FOLDER_ITEM_COPY_H_
