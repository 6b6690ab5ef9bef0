#ifndef PAYLOAD_TARGET_FOLDER_H_
#define PAYLOAD_TARGET_FOLDER_H_

#include "platform/framework/string.h"

/// The folder that an install creates: where it is placed, and how one that exists is removed. The
/// order of these steps, and what ends an install, is in payload/expand_folder.cpp.
namespace zephin {

class ZephinStubWindow;

/// Whether a folder of that name, which may hold separators, lies below the folder in which it is
/// placed. False for an empty name, for ".", for "a/.." and for any name that leaves that folder on
/// its way, as "../x" and "../x/y" do: a folder of the user's would be deleted before the install.
[[nodiscard]] bool LiesBelowItsParent(const String& targetName);

/// Full path of the folder that the setup names: in the applications folder or, if the setup says
/// so, in a folder that the user selects. Empty if the user cancels or selects a folder that isn't
/// writable, which has then been reported.
[[nodiscard]] String PlaceOfTarget(ZephinStubWindow& window);

/// Deletes the target folder, which exists, after a question if the setup asks one. False ends the
/// install: the user refuses, or the folder still exists four seconds later, which has then been
/// reported.
[[nodiscard]] bool RemoveTargetFolder(ZephinStubWindow& window);

/// Shows the message that the existing folder can't be deleted and the install ends.
void ReportUndeletableFolder();

}  // namespace zephin

#endif  // PAYLOAD_TARGET_FOLDER_H_
