#ifndef PAYLOAD_ZIP_FILE_H_
#define PAYLOAD_ZIP_FILE_H_

#include "platform/framework/string.h"

namespace zephin::ViewConst {

/// Expands an archive into a folder, by a command that waits; no events run meanwhile. What stands
/// in the folder is expanded over, or deleted first with `deleteExisting`. True if the command
/// ended with status 0. Both are full paths; another raises NilObjectException.
[[nodiscard]] bool ZipFileToFolder(const String& zipPath, const String& folderPath,
                                   bool deleteExisting);

}  // namespace zephin::ViewConst

#endif  // PAYLOAD_ZIP_FILE_H_
