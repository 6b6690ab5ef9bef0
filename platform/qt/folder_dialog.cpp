#include "platform/qt/folder_dialog.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>

#include "platform/qt/qt_string.h"

namespace zephin {
namespace {

void SetCaption(QFileDialog& dialog, QFileDialog::DialogLabel label, const String& caption) {
  if (!caption.IsEmpty()) {
    dialog.setLabelText(label, AsCaption(ToQString(caption)));
  }
}

}  // namespace

Ref<FolderItem> RunFolderDialog(const SelectFolderDialog& model, QWidget* over) {
  QFileDialog dialog(over);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setFileMode(QFileDialog::Directory);
  if (!model.Title().IsEmpty()) {
    dialog.setWindowTitle(AsWindowTitle(ToQString(model.Title())));
  }
  SetCaption(dialog, QFileDialog::Accept, model.ActionButtonCaption());
  SetCaption(dialog, QFileDialog::Reject, model.CancelButtonCaption());
  if (!model.InitialDirectory().IsNil()) {
    const String path = model.InitialDirectory()->NativePath();
    dialog.setDirectory(QFile::decodeName(QByteArray::fromStdString(path.Bytes())));
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
    return nullptr;
  }
  const QString path = QDir(dialog.selectedFiles().constFirst()).absolutePath();
  return MakeRef<FolderItem>(QFile::encodeName(QDir::cleanPath(path)).toStdString());
}

}  // namespace zephin
