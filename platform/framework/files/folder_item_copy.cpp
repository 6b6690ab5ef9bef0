#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/framework/files/file_copy.h"
#include "platform/framework/files/path_bytes.h"
#include "platform/framework/folder_item.h"

namespace zephin {
namespace {

/// Makes a folder with the rights of the one in `state`. Its owner may always fill it: a disc that
/// can't be written marks all its folders so.
int CopyFolderItself(const struct stat& state, const char* to) {
  const mode_t rights = (state.st_mode & (S_ISVTX | ACCESSPERMS)) | S_IRWXU;
  if (mkdir(to, rights) != 0) {
    return errno;
  }
  struct stat made {};
  if (lstat(to, &made) == 0 && (made.st_mode & ALLPERMS) != rights) {
    chmod(to, rights);
  }
  return 0;
}

/// Clears the place of a file's copy. 0 if it may be made; EEXIST if `to` is the file itself.
int ClearPlace(const struct stat& source, const char* to) {
  struct stat there {};
  if (stat(to, &there) == 0) {
    if (there.st_dev == source.st_dev && there.st_ino == source.st_ino) {
      return EEXIST;
    }
    if (S_ISDIR(there.st_mode)) {
      return EISDIR;
    }
  }
  if (lstat(to, &there) != 0) {
    return errno == ENOENT ? 0 : errno;
  }
  if (!S_ISREG(there.st_mode) && !S_ISLNK(there.st_mode)) {
    return EINVAL;
  }
  return unlink(to) == 0 ? 0 : errno;
}

int CopyItem(const char* from, const char* to) {
  struct stat source {};
  if (stat(from, &source) != 0) {
    return errno;
  }
  if (S_ISDIR(source.st_mode)) {
    return CopyFolderItself(source, to);
  }
  // The place is free as a rule: it is looked at only if the copy can't be made there.
  int code = CopyOneFile(from, source, to);
  if (code != EEXIST) {
    return code;
  }
  code = ClearPlace(source, to);
  if (code == EEXIST) {
    return 0;
  }
  return code == 0 ? CopyOneFile(from, source, to) : code;
}

}  // namespace

void FolderItem::CopyFileTo(const Ref<FolderItem>& destination) {
  lastErrorCode_ = CopyItem(SystemPath(path_), SystemPath(destination->path_));
}

}  // namespace zephin
