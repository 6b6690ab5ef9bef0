#ifndef PAYLOAD_BUNDLE_RESOURCES_H_
#define PAYLOAD_BUNDLE_RESOURCES_H_

#include "platform/framework/folder_item.h"

/// The bundle's `Contents/Resources`, and what a setup names in it.
namespace zephin {

class ZephinStubWindow;

/// The folder itself, or the target of a link of that name. It need not exist. Nil if the bundle
/// can't be found.
Ref<FolderItem> ResourcesFolder();

/// A helper program of the publisher's, by the name that the setup gives it. A name that begins
/// with a token is replaced by the path that it stands for, and SpecialPath puts a path on the
/// clipboard; then the program must exist. Any other name is one in `resources`, which may be nil;
/// there the program need not exist. Links are followed. Nil if there is no item to launch.
Ref<FolderItem> FindHelper(ZephinStubWindow& window, String& name,
                           const Ref<FolderItem>& resources);

}  // namespace zephin

#endif  // PAYLOAD_BUNDLE_RESOURCES_H_
