#ifndef PAYLOAD_SCRAMBLED_FILE_H_
#define PAYLOAD_SCRAMBLED_FILE_H_

#include "platform/framework/string.h"

namespace zephin::ViewConst {

/// Rewrites a whole file in its scrambled form (`encrypt`) or its plain one. The file is deleted
/// and created again, so it gets the access rights of a new file; if it can't be created it is
/// lost. Does nothing, silently, if `path` names no file that can be read.
///
/// The deleted file is read while the new one is written, so memory never holds the whole file. The
/// disk space of each part is freed once the part has been read: otherwise a payload would need its
/// size twice on the disk, and a disk with room for it once would fail. A file with another name (a
/// hard link) keeps its content, and its space. A file that can't be deleted is overwritten.
void EncryptDecryptFileEnd(const String& path, bool encrypt);

}  // namespace zephin::ViewConst

#endif  // PAYLOAD_SCRAMBLED_FILE_H_
