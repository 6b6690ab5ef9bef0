#ifndef PLATFORM_FRAMEWORK_SESSION_H_
#define PLATFORM_FRAMEWORK_SESSION_H_

#include <utility>

#include "platform/framework/folder_item.h"
#include "platform/framework/string.h"

// What the program asks of the user's session, apart from windows.

namespace zephin {

/// The system clipboard of the user's session. The object has no state: each call asks the desktop.
class Clipboard {
 public:
  /// The clipboard's text as UTF-8; empty if it holds no text.
  String Text() const;
  /// Replaces the contents of the clipboard. Other programs can still paste the text after this
  /// program has ended.
  void SetText(const String& text);
};

/// The desktop's dialog in which the user selects an existing folder. A text that is empty is
/// replaced by the desktop's own.
class SelectFolderDialog {
 public:
  /// Text of the button that accepts the selected folder.
  const String& ActionButtonCaption() const { return actionButtonCaption_; }
  void SetActionButtonCaption(String caption) { actionButtonCaption_ = std::move(caption); }
  const String& CancelButtonCaption() const { return cancelButtonCaption_; }
  void SetCancelButtonCaption(String caption) { cancelButtonCaption_ = std::move(caption); }
  const String& Title() const { return title_; }
  void SetTitle(String title) { title_ = std::move(title); }
  /// The folder that is shown first; nil: the desktop decides.
  const Ref<FolderItem>& InitialDirectory() const { return initialDirectory_; }
  void SetInitialDirectory(Ref<FolderItem> folder) { initialDirectory_ = std::move(folder); }

  /// Shows the dialog and returns when the user has closed it. Gives the selected folder, or nil if
  /// the user cancelled.
  Ref<FolderItem> ShowModal() const;

 private:
  String actionButtonCaption_;
  String cancelButtonCaption_;
  String title_;
  Ref<FolderItem> initialDirectory_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_SESSION_H_
