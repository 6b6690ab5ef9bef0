#include "platform/qt/folder_dialog.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QTreeView>

#include "platform/qt/qt_string.h"

namespace zephin {
namespace {

void SetCaption(QFileDialog& dialog, QFileDialog::DialogLabel label, const String& caption) {
  if (!caption.IsEmpty()) {
    dialog.setLabelText(label, AsCaption(ToQString(caption)));
  }
}

/// Leaves the names of the folders, and the buttons without the pictures of the user's theme.
void Simplify(QFileDialog& dialog) {
  for (auto* buttons : dialog.findChildren<QDialogButtonBox*>()) {
    for (QAbstractButton* button : buttons->buttons()) {
      button->setIcon(QIcon());
    }
  }
  for (auto* list : dialog.findChildren<QTreeView*>()) {
    for (int column = 1; column < list->model()->columnCount(); ++column) {
      list->hideColumn(column);
    }
  }
  for (const char* name : {"fileTypeLabel", "fileTypeCombo"}) {
    if (auto* row = dialog.findChild<QWidget*>(QLatin1String(name))) {
      row->hide();
    }
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
  Simplify(dialog);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
    return nullptr;
  }
  const QString path = QDir(dialog.selectedFiles().constFirst()).absolutePath();
  return MakeRef<FolderItem>(QFile::encodeName(QDir::cleanPath(path)).toStdString());
}

}  // namespace zephin
