#include "files/folders.h"

#include <algorithm>
#include <vector>

#include "dialogs/conflict.h"
#include "files/files.h"
#include "platform/framework/application.h"
#include "util/globals.h"
#include "util/paths.h"

namespace zephin::ViewConst {
namespace {

using GlobalsVk::MyGetFolderItem;
using GlobalsVk::MyGetString;

enum class Errors { Hidden, Shown };

void ReportConflict(Errors errors, const String& text) {
  if (errors == Errors::Shown) {
    GlobalsVk::gConflictType = GlobalsVk::kConflictTextGiven;
    GlobalsVk::gErrorString = text;
    GlobalsVk::PoseConflictDialog();
  }
}

/// Makes one folder of a chain. False ends the chain.
bool MakeSegment(const String& segment, Errors errors) {
  DebugConsole("FD4.2");
  const Ref<FolderItem> item = MyGetFolderItem(segment);
  DebugConsole("FD4.3");
  if (item.IsNil()) {
    return false;
  }
  if (item->Exists()) {
    DebugConsole("FD5");
    if (!item->Directory()) {
      ReportConflict(errors, MyGetString(GlobalsVk::kFileExistsMessage) + segment);
      return false;
    }
    return true;
  }
  DebugConsole("FD6");
  item->CreateAsFolder();
  if (!item->Exists()) {
    ReportConflict(errors, MyGetString(GlobalsVk::kVolumeMessage) + gCR + gCR + segment);
    return false;
  }
  return true;
}

/// The folders that a copy is inside of: the top of the copy, then the source folders from the top
/// down.
class OpenFolders {
 public:
  /// Adds a folder for as long as it lives.
  class Entered {
   public:
    Entered(OpenFolders& open, const Ref<FolderItem>& folder) : open_(open) {
      open_.folders_.push_back(folder);
    }
    ~Entered() { open_.folders_.pop_back(); }
    Entered(const Entered&) = delete;
    Entered& operator=(const Entered&) = delete;

   private:
    OpenFolders& open_;
  };

  bool Hold(const FolderItem& folder) const {
    return std::any_of(folders_.begin(), folders_.end(),
                       [&folder](const Ref<FolderItem>& open) { return open->IsSameAs(folder); });
  }

 private:
  std::vector<Ref<FolderItem>> folders_;
};

bool CopyInto(const String& source, const String& destination, OpenFolders& open);

/// Copies one item of the folder `from` to the path `target`.
bool CopyChild(const Ref<FolderItem>& from, const Ref<FolderItem>& child, const String& target,
               OpenFolders& open) {
  if (!child->Directory()) {
    child->CopyFileTo(MyGetFolderItem(target));
    // The folder's code on purpose, not the child's: one file that can't be read doesn't make a
    // whole copy fail.
    return from->LastErrorCode() == 0;
  }
  // An alias to a folder above it, or the copy itself, would be copied without end.
  return open.Hold(*child) || CopyInto(MyAbsolutePath(child), target, open);
}

bool CopyInto(const String& source, const String& destination, OpenFolders& open) {
  const Ref<FolderItem> from = MyGetFolderItem(source);
  const Ref<FolderItem> to = MyGetFolderItem(destination);
  if (from.IsNil() || to.IsNil()) {
    return false;
  }
  to->CreateAsFolder();
  const OpenFolders::Entered entered(open, from);
  bool ok = from->LastErrorCode() == 0;
  const String base = MyAbsolutePath(to);
  for (std::int64_t i = from->Count(); i >= 1; --i) {
    const Ref<FolderItem> child = from->Item(i);
    if (!child.IsNil()) {
      ok = CopyChild(from, child, base + child->Name(), open) && ok;
    }
    RuntimeBackgroundTask();
  }
  return ok;
}

}  // namespace

bool CopyFolder(const String& source, const String& destination) {
  OpenFolders open;
  const Ref<FolderItem> top = MyGetFolderItem(destination);
  if (top.IsNil()) {
    return false;
  }
  const OpenFolders::Entered entered(open, top);
  return CopyInto(source, destination, open);
}

void DeleteFolderOrApp(const String& path) {
  const Ref<FolderItem> item = MyGetFolderItem(path);
  if (item.IsNil()) {
    return;
  }
  AllUsersFullAccessInTree(item);
  // Most items of a tree are files and go at once; only a full folder has to be looked into.
  item->Delete();
  if (item->LastErrorCode() == 0 || item->Alias() || !item->Directory()) {
    return;
  }
  for (std::int64_t i = item->Count(); i >= 1; --i) {
    const Ref<FolderItem> child = item->TrueItem(i);
    if (!child.IsNil()) {
      DeleteFolderOrApp(child->NativePath());
    }
    RuntimeBackgroundTask();
  }
  item->Delete();
}

void ForceDirectories(const String& path, bool showErrors) {
  DebugConsole("FD0");
  String whole = path;
  DropTrailingPathSeparator(whole);
  DebugConsole("FD1");
  if (DirectoryExists(whole) || whole.IsEmpty()) {
    return;
  }
  DebugConsole("FD2");
  const Errors errors = showErrors ? Errors::Shown : Errors::Hidden;
  bool ok = true;
  String segment = "/";
  std::int64_t index = 1;
  DebugConsole("FD3");
  GlobalsVk::gConflictType = 0;
  while (ok && !segment.IsEmpty()) {
    DebugConsole("FD4");
    // The first path tried is the one before the second separator, which leaves out the root.
    ++index;
    segment = DirectoryPathExtract(whole, index);
    DebugConsole("FD4.1");
    if (!segment.IsEmpty()) {
      ok = MakeSegment(segment, errors);
    }
    RuntimeBackgroundTask();
  }
  DebugConsole("FD7");
}

}  // namespace zephin::ViewConst
