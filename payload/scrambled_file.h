#ifndef PAYLOAD_SCRAMBLED_FILE_H_
#define PAYLOAD_SCRAMBLED_FILE_H_

#include "platform/framework/string.h"

namespace zephin::ViewConst {

/// Rewrites a file in its scrambled form (`encrypt`) or its plain one, whole. The file is deleted
/// and made anew, so its rights are those of a new file; if it can't be made again it is gone.
/// Nothing happens, silently, for a path without a file that can be read.
void EncryptDecryptFileEnd(const String& path, bool encrypt);

}  // namespace zephin::ViewConst

#endif  // PAYLOAD_SCRAMBLED_FILE_H_
