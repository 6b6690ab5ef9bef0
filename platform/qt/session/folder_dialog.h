#ifndef PLATFORM_QT_FOLDER_DIALOG_H_
#define PLATFORM_QT_FOLDER_DIALOG_H_

#include "platform/framework/folder_item.h"
#include "platform/framework/select_folder_dialog.h"

class QWidget;

namespace zephin {

/// Shows the dialog modally above `over` (may be null). The folder that the user chooses exists;
/// nil if the user cancels. Folders whose names are not valid UTF-8 are not offered: the toolkit
/// can't name them.
Ref<FolderItem> RunFolderDialog(const SelectFolderDialog& model, QWidget* over);

}  // namespace zephin

#endif  // PLATFORM_QT_FOLDER_DIALOG_H_
