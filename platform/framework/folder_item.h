#ifndef PLATFORM_FRAMEWORK_FOLDER_ITEM_H_
#define PLATFORM_FRAMEWORK_FOLDER_ITEM_H_

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/framework/ref.h"
#include "platform/framework/string.h"

namespace zephin {

class BinaryStream;

/// A path in the file system, where an item may exist or not. The object holds only the full path
/// and asks the disk at each call, except for the list of a folder's items. Defined in
/// files/folder_item.cpp; copying in files/folder_item_copy.cpp, moving and renaming in
/// files/folder_item_move.cpp, opening in files/streams.cpp.
///
/// A path that holds a byte 0 names no item: nothing exists there and every operation fails.
///
/// An alias is a symbolic link. `Directory`, `Length`, `Count`, the opening of an existing file and
/// the source of a copy follow it. `Exists` is true for a dangling link. `Delete`, `MoveFileTo` and
/// `SetName` act on the link itself.
///
/// `Delete`, `CopyFileTo`, `MoveFileTo`, `CreateAsFolder` and `SetName` throw nothing. They set
/// `LastErrorCode` of the item on which they are called.
class FolderItem {
 public:
  /// `path` is absolute, may hold any bytes, and has no trailing slash except for "/" itself.
  explicit FolderItem(std::string path) : path_(std::move(path)) {}

  /// The item with this name in this folder, which need not exist. If it is a link and
  /// `followAlias` is set, the result is the link's target under the target's own path; a dangling
  /// link is returned itself. The name may contain slashes. Nil for an empty name.
  Ref<FolderItem> Child(const String& name, bool followAlias = true) const;

  /// Number of items in the folder, including hidden ones; 0 for a file and for a folder that
  /// cannot be read. It reads the folder into a list, sorted by the bytes of the names but with
  /// hidden items last, that `Item` and `TrueItem` use until the next call. A deletion goes through
  /// it backwards: a program that still writes to the folder sees at once that its hidden marker is
  /// gone, before it can make items in folders that the deletion has already listed.
  std::int64_t Count() const;
  /// Item `index` (from 1) of the list; nil outside of it. For a link, `Item` gives the link's own
  /// path with kind and content of its target, and `Alias` is false; `TrueItem` gives the link.
  Ref<FolderItem> Item(std::int64_t index) const;
  Ref<FolderItem> TrueItem(std::int64_t index) const;

  bool Exists() const;
  bool Directory() const;
  /// Whether both paths lead to the same item on the disk. False if one of them does not exist.
  bool IsSameAs(const FolderItem& other) const;
  /// True for a symbolic link, but never for an item returned by `Item`.
  bool Alias() const;
  /// Size of a file in bytes; 0 for a folder and for an item that does not exist.
  std::int64_t Length() const;
  /// False if the name begins with a dot.
  bool Visible() const;
  /// Sets the hidden flag where the platform has one. No effect here.
  void SetVisible(bool visible);
  /// Whether this user can write the file, or create items in the folder. False if it does not
  /// exist.
  bool IsWriteable() const;
  /// Adds all rights for all users, like `chmod ugo+rwx` but without starting a shell for each of
  /// many thousand items. Never acts through a link. Fails silently: for a link, an item that does
  /// not exist, and an item of another user.
  void GrantAllRights();

  /// The last part of the path; "/" for the root.
  String Name() const;
  /// Renames the item within its folder, and changes this object's path with it. Fails, and changes
  /// nothing, if the name exists, is empty, contains a slash, or is "." or "..". The item's present
  /// name is no error.
  void SetName(const String& name);
  /// The full path, without a trailing slash except for the root.
  String NativePath() const;
  /// The path as one word for a POSIX shell, whatever bytes it holds.
  String ShellPath() const;
  /// The folder above; nil for the root.
  Ref<FolderItem> Parent() const;

  /// 0 if the last operation succeeded, else an error number of the system.
  int LastErrorCode() const { return lastErrorCode_; }

  /// Deletes a file, a link or an empty folder.
  void Delete();
  /// Copies this file, or creates an empty folder like this one, with the same permissions except
  /// for set-id bits; the owner of the new folder always gets all of them. The destination must not
  /// be nil.
  ///
  /// The copy of a file replaces a file or link at the destination, which is lost even if the copy
  /// then fails; a copy onto itself does nothing. Errors: a folder (or a link to one) at the
  /// destination; for a folder, anything there; a source that is neither a file nor a folder. If
  /// the disk is full or the copy fails otherwise, nothing remains at the destination. Events are
  /// processed meanwhile; a Quit in them leaves what was written so far.
  void CopyFileTo(const Ref<FolderItem>& destination);
  /// Moves the item with its contents to the destination's path; this object keeps the old path.
  /// The destination must not be nil. A folder without write permission can be moved by its owner
  /// and keeps its permissions. Errors: a folder (or a link to one) at the destination; for a
  /// folder, anything there. A file or link there is replaced by a file or link.
  ///
  /// Between file systems the item is copied and then deleted, and events are processed meanwhile.
  /// If the copy fails, it is deleted again and the item stays as it was. If the item cannot be
  /// deleted, both remain and the operation fails.
  void MoveFileTo(const Ref<FolderItem>& destination);
  /// Creates a folder. Fails if anything exists there or the parent folder does not exist.
  void CreateAsFolder();

  /// Creates a new file and opens it for writing. An existing file or link is replaced, never
  /// written through; its target and other names of the same file stay as they are. A file that
  /// cannot be deleted is emptied instead if it has no other name. Nil if that fails, and for a
  /// folder, a link to one, or a device. `type` has no effect on this platform.
  Ref<BinaryStream> CreateBinaryFile(const String& type);
  /// Opens an existing file for reading, or for reading and writing. Nil if that fails or the item
  /// is not a plain file.
  Ref<BinaryStream> OpenAsBinaryFile(bool writeable);

  /// Opens the item like a double-click: expands a ".zip" file beside itself, starts a program or
  /// bundle, opens anything else with its default program. Returns at once; errors are ignored.
  void Launch(bool activate) const;

 private:
  enum class Links { Own, Followed };
  FolderItem(std::string path, Links links) : path_(std::move(path)), links_(links) {}
  Ref<FolderItem> Listed(std::int64_t index, Links links) const;

  std::string path_;
  Links links_ = Links::Own;
  int lastErrorCode_ = 0;
  mutable std::vector<std::string> names_;
  mutable bool listed_ = false;
};

/// The item with this path; trailing slashes are dropped. Mode 1 takes absolute paths only. Mode 0
/// also takes paths relative to the folder that contains the bundle: the folder above the first
/// "/Contents" (in any letter case) of the executable's path, or the executable's own folder if it
/// is not in a bundle. An empty path means that folder in both modes. Nil for a relative path in
/// mode 1 and if the machine does not know the executable.
Ref<FolderItem> GetFolderItem(const String& path, int mode = 0);

/// An unused path in the temporary folder; nothing is created. Nil if there is no such folder.
Ref<FolderItem> GetTemporaryFolderItem();

/// Well-known folders of the machine and the user, taken from the application's `Machine`. Each is
/// nil if the machine does not know it.
namespace SpecialFolder {

/// It need not exist. The Applications folder is beside it.
Ref<FolderItem> System();
/// The folder that applications are installed in; the target if it is a link. Each call makes it
/// (mode 0755) if nothing exists there. If that fails, the item does not exist.
Ref<FolderItem> Applications();
Ref<FolderItem> UserHome();
/// It need not exist.
Ref<FolderItem> Desktop();
/// A private folder of the user.
Ref<FolderItem> Temporary();

}  // namespace SpecialFolder

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FOLDER_ITEM_H_
