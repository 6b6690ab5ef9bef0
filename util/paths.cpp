#include "util/paths.h"

#include <string>

#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/texts.h"

namespace zephin::ViewConst {
namespace {

/// A single byte in every encoding that a path can have, so paths are split by bytes.
constexpr char kSeparator = '/';

/// `count` bytes of the text from the zero-based `start` on, in its encoding.
String Bytes(const String& text, std::size_t start, std::size_t count = std::string::npos) {
  return {text.Bytes().substr(start, count), text.DeclaredEncoding()};
}

/// Where the name behind the last separator begins, from 0.
std::size_t NameStart(const String& path) {
  const std::size_t separator = path.View().rfind(kSeparator);
  return separator == std::string_view::npos ? 0 : separator + 1;
}

/// Where the extension begins, dot included; the path's length if it has none.
std::size_t ExtensionStart(const String& path) {
  const std::size_t dot = path.View().rfind('.');
  return dot == std::string_view::npos || dot < NameStart(path) ? path.Size() : dot;
}

String WithoutLastByte(const String& path) {
  return path.IsEmpty() ? path : Bytes(path, 0, path.Size() - 1);
}

}  // namespace

String GetPathSeparator() {
  return "/";
}

String MyAbsolutePath(const Ref<FolderItem>& item) {
  if (item.IsNil()) {
    return "";
  }
  String path = item->NativePath();
  // The root is its own separator.
  if (item->Directory() && !path.IsEmpty() && path.View().back() != kSeparator) {
    path += "/";
  }
  return path;
}

void DropTrailingPathSeparator(String& path) {
  if (!path.IsEmpty() && path.View().back() == kSeparator) {
    path = WithoutLastByte(path);
  }
}

String ExtractFilePath(const String& path) {
  return Bytes(path, 0, NameStart(path));
}

String ExtractFileName(const String& path) {
  return Bytes(path, NameStart(path));
}

String ExtractFileExt(const String& path) {
  return Bytes(path, ExtensionStart(path));
}

String ChangeFileExt(const String& path, const String& extension) {
  return Bytes(path, 0, ExtensionStart(path)) + extension;
}

String MyExtractFilePath(const String& path) {
  String folder = WithoutLastByte(ExtractFilePath(path));
  // The caller means the folder beside which the bundle is, not a folder within it.
  if (TextEquals(ExtractFileExt(folder), ".app")) {
    folder = WithoutLastByte(ExtractFilePath(folder));
  }
  return folder;
}

String DirectoryPathExtract(const String& path, std::int64_t index) {
  // The traces end in `gDebugStr`, which a developer reads after a crash.
  DebugConsole("DPE0");
  std::size_t position = 0;
  std::int64_t found = 0;
  while (found < index && position != std::string_view::npos) {
    DebugConsole("DPE1");
    position = path.View().find(kSeparator, found == 0 ? 0 : position + 1);
    ++found;
    DebugConsole("DPE2");
  }
  DebugConsole("DPE3");
  // The search that finds none is counted too: it stands for the end of the path.
  return found == index ? Bytes(path, 0, position) : "";
}

std::int64_t ContentsPosition(const String& path) {
  return Pos(GetPathSeparator() + "Contents", path);
}

}  // namespace zephin::ViewConst

namespace zephin::GlobalsVk {

Ref<FolderItem> MyGetFolderItem(const String& path) {
  // A relative path would be taken from the folder that holds the bundle.
  return path.View().starts_with('/') ? GetFolderItem(path, 1) : nullptr;
}

}  // namespace zephin::GlobalsVk
