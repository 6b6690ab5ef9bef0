#ifndef PLATFORM_FRAMEWORK_SELECT_FOLDER_DIALOG_H_
#define PLATFORM_FRAMEWORK_SELECT_FOLDER_DIALOG_H_

#include <utility>

#include "platform/framework/folder_item.h"
#include "platform/framework/string.h"

namespace zephin {

/// The desktop's dialog for a folder that exists. An empty text leaves the dialog's own.
class SelectFolderDialog {
 public:
  const String& ActionButtonCaption() const { return actionButtonCaption_; }
  void SetActionButtonCaption(String caption) { actionButtonCaption_ = std::move(caption); }
  const String& CancelButtonCaption() const { return cancelButtonCaption_; }
  void SetCancelButtonCaption(String caption) { cancelButtonCaption_ = std::move(caption); }
  const String& Title() const { return title_; }
  void SetTitle(String title) { title_ = std::move(title); }
  /// Where it opens; nil leaves that to the desktop.
  const Ref<FolderItem>& InitialDirectory() const { return initialDirectory_; }
  void SetInitialDirectory(Ref<FolderItem> folder) { initialDirectory_ = std::move(folder); }

  /// The chosen folder, or nil if the user cancels.
  Ref<FolderItem> ShowModal() const;

 private:
  String actionButtonCaption_;
  String cancelButtonCaption_;
  String title_;
  Ref<FolderItem> initialDirectory_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_SELECT_FOLDER_DIALOG_H_
