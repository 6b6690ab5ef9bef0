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

/// A handle on a place in the file system, at which something may stand or nothing. It holds the
/// full path alone and asks the disk anew at each call, but for the list of a folder's items.
///
/// A path that holds a byte 0 names no place: nothing exists there and every act fails.
///
/// An alias is a symbolic link. `Directory`, `Length`, `Count`, the streams and the source of a
/// copy mean what a link points to; `Exists` is true for a dangling link too; `Delete`,
/// `MoveFileTo` and a new name act on the link itself.
///
/// `Delete`, `CopyFileTo`, `MoveFileTo`, `CreateAsFolder` and `SetName` raise nothing: they leave 0
/// or a code of the system in `LastErrorCode` of the item that they were called on.
class FolderItem {
 public:
  /// `path` is absolute, of any bytes, and has no trailing slash (but "/" itself).
  explicit FolderItem(std::string path) : path_(std::move(path)) {}

  /// The item of that name in this folder, whether it exists or not. `followAlias` gives what a
  /// link of that name points to, under the target's own path; a dangling link gives itself. A name
  /// may hold slashes. Nil for an empty name.
  Ref<FolderItem> Child(const String& name, bool followAlias = true) const;

  /// Number of items in the folder, hidden ones too, "." and ".." not; 0 for a file or a folder
  /// that can't be read. It takes the list, sorted by the bytes of the names, to which `Item` and
  /// `TrueItem` refer until the next call.
  std::int64_t Count() const;
  /// Item `index` (from 1) of the list; nil outside it. An item of `Item` has a link's own name and
  /// place, with kind and content of its target, and isn't an `Alias`; `TrueItem` gives the link.
  Ref<FolderItem> Item(std::int64_t index) const;
  Ref<FolderItem> TrueItem(std::int64_t index) const;

  bool Exists() const;
  bool Directory() const;
  /// Whether both are one item on the disk, by whatever paths and links; false where either is not
  /// there.
  bool IsSameAs(const FolderItem& other) const;
  /// True for a symbolic link (never for an item of `Item`).
  bool Alias() const;
  /// Size of a file in bytes; 0 for a folder and where nothing stands.
  std::int64_t Length() const;
  /// False for a name that begins with a dot.
  bool Visible() const;
  /// Sets the hidden flag where the platform has one; does nothing here.
  void SetVisible(bool visible);
  /// Whether this user can write it: for a folder, make items in it. False where nothing stands.
  bool IsWriteable() const;
  /// Gives all users all rights on the item, as `chmod ugo+rwx` would, without starting a shell: a
  /// tree may hold tens of thousands of items. Never acts through a link: for a link, and where
  /// nothing stands or the user may not, it does nothing.
  void GrantAllRights();

  /// The last part of the path; "/" for the root.
  String Name() const;
  /// Renames the item within its folder, and this handle with it. A name that is taken, or one that
  /// isn't a plain name, fails and changes nothing. Its own name is no failure.
  void SetName(const String& name);
  /// Full path without a trailing slash (but for the root).
  String NativePath() const;
  /// The path as one word of a POSIX shell, whatever bytes it holds.
  String ShellPath() const;
  /// The folder that holds it; nil for the root.
  Ref<FolderItem> Parent() const;

  int LastErrorCode() const { return lastErrorCode_; }

  /// Removes a file, a link or an empty folder.
  void Delete();
  /// Copies this file, or makes a folder for this folder (without its contents), with its rights
  /// but for set-id bits; the owner may always read and fill the new folder. A file's copy replaces
  /// a file or link at the destination, which is lost even if the copy then fails, and a copy onto
  /// itself does nothing. Errors: a folder at the destination (or a link to one); for a folder
  /// anything there; a source that is neither file nor folder. When the disk is full or the copy
  /// fails otherwise on its way, nothing is left at the destination. The destination must not be
  /// nil. Lets events run while it works; a Quit in them leaves what was written so far.
  void CopyFileTo(const Ref<FolderItem>& destination);
  /// Moves it, with all that it holds, to the destination's path; this handle keeps the old one.
  /// The user's own folder may be one that can't be written. A folder there (or a link to one) is
  /// an error; a file or link there is replaced by a file or link, and is an error for a folder.
  /// The destination must not be nil. Between file systems the item is copied and then removed, and
  /// events run meanwhile: if the copy fails, what was copied is taken back and the item stays as
  /// it was; if the item can't be removed, both stand and a code tells it.
  void MoveFileTo(const Ref<FolderItem>& destination);
  /// Makes a folder; an error where anything stands or the folder above is missing.
  void CreateAsFolder();

  /// Creates a new file in place of any that has this path, and opens it for writing. A link is
  /// replaced, never written through. A file that can't be removed is emptied instead, unless a
  /// link leads to it. Nil if that fails, and for a folder, a link to one, or a device. `type` has
  /// no meaning on this platform.
  Ref<BinaryStream> CreateBinaryFile(const String& type);
  /// Opens an existing file for reading, or for both. Nil if that fails or it isn't a file.
  Ref<BinaryStream> OpenAsBinaryFile(bool writeable);

  /// Hands the item to the desktop: a ".zip" file is expanded beside itself, a program or bundle is
  /// started, anything else opens in its default program. Returns at once, without a result.
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

/// The item of a full path (mode 1: a plain slash path, no unescaping). An empty name gives the
/// folder that holds the bundle, and a relative one (mode 0 alone) is looked up in that folder: the
/// folder above the text before the first "/Contents" (in any letter case) of the executable's
/// path, or the executable's own folder if it isn't in a bundle. Nil for a relative path in mode 1,
/// and where the machine doesn't know its executable. Trailing slashes are dropped.
Ref<FolderItem> GetFolderItem(const String& path, int mode = 0);

/// An unused path in the temporary folder; nothing is made there. Nil if there is no such folder.
Ref<FolderItem> GetTemporaryFolderItem();

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FOLDER_ITEM_H_
