#ifndef PLATFORM_BUNDLE_BUNDLE_LOCATION_H_
#define PLATFORM_BUNDLE_BUNDLE_LOCATION_H_

#include "platform/framework/folder_item.h"

/// Where the running bundle lies. Its path ends before the first "/Contents" of the executable's
/// path, in any letter case, also where a folder above the bundle is named so.
namespace zephin::ViewConst {

/// The path of the folder that holds the bundle, with a trailing "/"; empty if the executable's
/// path has no "/Contents". For a bundle that the system runs from a translocated place, unless
/// gIgnoreTranslocationError is set, it offers to clear the cause and ends the run instead.
String GetApplicationPath();

/// The bundle's `Contents` folder; nil if the executable is unknown or its path has none.
Ref<FolderItem> ContentsFolder();

}  // namespace zephin::ViewConst

#endif  // PLATFORM_BUNDLE_BUNDLE_LOCATION_H_
