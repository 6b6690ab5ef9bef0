#ifndef UTIL_PATHS_H_
#define UTIL_PATHS_H_

#include <cstdint>

#include "platform/framework/folder_item.h"
#include "platform/framework/string.h"

/// Splitting and joining paths as texts, with "/" as separator. Only MyAbsolutePath reads the disk.
/// Callers depend on every trailing separator that is or isn't there.
namespace zephin::ViewConst {

/// Always "/".
String GetPathSeparator();

/// The item's full path, with a trailing "/" if it is a folder that exists; empty for nil. A
/// missing folder has no "/" behind it.
String MyAbsolutePath(const Ref<FolderItem>& item);

/// Removes one trailing separator; of two, one remains.
void DropTrailingPathSeparator(String& path);

/// Up to and including the last separator; empty if there is none.
String ExtractFilePath(const String& path);

/// Behind the last separator; the whole path if there is none, empty if the path ends in one.
String ExtractFileName(const String& path);

/// From the last "." of the last component on, dot included; empty if it has none. ".zip" as a
/// whole name is an extension.
String ExtractFileExt(const String& path);

/// The path with `extension` (which brings its dot) in place of its own, or behind it if it has
/// none.
String ChangeFileExt(const String& path, const String& extension);

/// The folder that holds a file, without a trailing separator: "/A/B" for "/A/B/file". A bundle
/// counts as a file: "/A" for "/A/B.app/file" (one bundle is skipped, not two). Empty for a path
/// without a separator and for a file in the root.
String MyExtractFilePath(const String& path);

/// The part of `path` before its separator number `index`, from 1: of "/a/b" number 1 is empty, 2
/// is "/a", 3 (one more than it has) the whole path, and all above are empty.
String DirectoryPathExtract(const String& path, std::int64_t index);

/// The first "/Contents" of a path in any letter case, from 1; 0 if it isn't in it. The first
/// occurrence counts, also in a folder above the bundle.
std::int64_t ContentsPosition(const String& path);

}  // namespace zephin::ViewConst

namespace zephin::GlobalsVk {

/// The item of a full path, whether it exists or not; nil if `path` is empty or doesn't begin with
/// "/", so that relative paths never resolve.
Ref<FolderItem> MyGetFolderItem(const String& path);

}  // namespace zephin::GlobalsVk

#endif  // UTIL_PATHS_H_
