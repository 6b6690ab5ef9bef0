#include "platform/framework/select_folder_dialog.h"

#include "platform/framework/application.h"

namespace zephin {

Ref<FolderItem> SelectFolderDialog::ShowModal() const {
  return Application::Current().Session().SelectFolder(*this);
}

}  // namespace zephin
