#ifndef PAYLOAD_TARGET_FOLDER_H_
#define PAYLOAD_TARGET_FOLDER_H_

#include "platform/framework/string.h"

namespace zephin {

/// Whether a folder of that name lies below the one that it is put in. Not so the empty name, "."
/// and "..", and "a/../..": installing there would delete the user's own folder first.
bool LiesBelowItsParent(const String& targetName);

}  // namespace zephin

#endif  // PAYLOAD_TARGET_FOLDER_H_
