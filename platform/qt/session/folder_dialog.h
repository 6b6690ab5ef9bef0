#ifndef PLATFORM_QT_SESSION_FOLDER_DIALOG_H_
#define PLATFORM_QT_SESSION_FOLDER_DIALOG_H_

#include "platform/framework/folder_item.h"
#include "platform/framework/session.h"

class QWidget;

namespace zephin {

/// Shows the dialog modally above `over` (null: none), and returns an existing folder, or nil if
/// the user cancels. The user can make a new folder in it, but not delete, rename or move one.
/// Folders that the user can't write to have a lock. The dialog's own words are in the language of
/// the session, if the toolkit's translations are installed. Folders whose names are not valid
/// UTF-8 are missing from the list, because the toolkit can't name them.
Ref<FolderItem> RunFolderDialog(const SelectFolderDialog& model, QWidget* over);

}  // namespace zephin

#endif  // PLATFORM_QT_SESSION_FOLDER_DIALOG_H_
