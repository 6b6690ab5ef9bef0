#ifndef PAYLOAD_ZIP_FILE_H_
#define PAYLOAD_ZIP_FILE_H_

#include "platform/framework/string.h"

namespace zephin::ViewConst {

/// Expands an archive into a folder with a command, and returns when the command has ended; no
/// events run meanwhile. An existing folder keeps what it holds, and files of the same names are
/// replaced; with `deleteExisting` it is deleted first. True if the command ended with status 0.
/// Both must be full paths, else this raises NilObjectException.
[[nodiscard]] bool ZipFileToFolder(const String& zipPath, const String& folderPath,
                                   bool deleteExisting);

}  // namespace zephin::ViewConst

#endif  // PAYLOAD_ZIP_FILE_H_
