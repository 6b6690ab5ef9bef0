#include "platform/qt/session/folder_dialog.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeView>

#include "platform/qt/qt_string.h"

namespace zephin {
namespace {

void SetCaption(QFileDialog& dialog, QFileDialog::DialogLabel label, const String& caption) {
  if (!caption.IsEmpty()) {
    dialog.setLabelText(label, AsCaption(ToQString(caption)));
  }
}

/// Hides all columns but the names of the folders, and the choice of a file type.
void Simplify(QFileDialog& dialog) {
  for (auto* list : dialog.findChildren<QTreeView*>()) {
    for (int column = 1; column < list->model()->columnCount(); ++column) {
      list->hideColumn(column);
    }
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  }
  for (const char* name : {"fileTypeLabel", "fileTypeCombo"}) {
    if (auto* row = dialog.findChild<QWidget*>(QLatin1String(name))) {
      row->hide();
    }
  }
}

/// The folder, or the nearest one above it that exists and that the toolkit can name.
QString NearestFolder(const FolderItem& folder) {
  QString path = QFile::decodeName(QByteArray::fromStdString(folder.NativePath().Bytes()));
  while (!QFileInfo(path).isDir() && path.contains(u'/')) {
    path.truncate(path.lastIndexOf(u'/'));
  }
  return path.isEmpty() ? QDir::rootPath() : path;
}

/// Empty if the user has accepted nothing that exists.
QString AcceptedFolder(const QFileDialog& dialog) {
  // The field comes first: while the user types a path, the list selects each folder on the way,
  // and `selectedFiles` returns the first of them.
  const auto* field = dialog.findChild<QLineEdit*>(QLatin1String("fileNameEdit"));
  if (field != nullptr && !field->text().isEmpty()) {
    const QFileInfo named(dialog.directory(), field->text());
    if (named.isDir()) {
      return named.absoluteFilePath();
    }
  }
  return dialog.selectedFiles().value(0);
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
    dialog.setDirectory(NearestFolder(*model.InitialDirectory()));
  }
  Simplify(dialog);
  const QString accepted = dialog.exec() == QDialog::Accepted ? AcceptedFolder(dialog) : "";
  if (accepted.isEmpty()) {
    return nullptr;
  }
  const QString path = QDir(accepted).absolutePath();
  return MakeRef<FolderItem>(QFile::encodeName(QDir::cleanPath(path)).toStdString());
}

}  // namespace zephin
