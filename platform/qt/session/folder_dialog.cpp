#include "platform/qt/session/folder_dialog.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QLocale>
#include <QShortcut>
#include <QSplitter>
#include <QTranslator>
#include <QTreeView>

#include "platform/qt/qt_string.h"
#include "platform/qt/session/places.h"
#include "platform/qt/session/session.h"
#include "platform/qt/widgets/locked_icons.h"
#include "platform/qt/widgets/placement.h"

namespace zephin {
namespace {

// In points.
constexpr QSize kUsualSize(640, 420);
constexpr int kSideBarWidth = 140;

/// Puts the toolkit's own words into the user's language for as long as it lives. Other windows
/// show only the publisher's texts.
class TranslatedWords {
 public:
  TranslatedWords() {
    for (const QString& folder : {BundleContents() + QStringLiteral("Frameworks/translations"),
                                  QLibraryInfo::path(QLibraryInfo::TranslationsPath)}) {
      if (translator_.load(QLocale::system(), QStringLiteral("qtbase"), QStringLiteral("_"),
                           folder)) {
        QCoreApplication::installTranslator(&translator_);
        break;
      }
    }
  }
  ~TranslatedWords() { QCoreApplication::removeTranslator(&translator_); }
  TranslatedWords(const TranslatedWords&) = delete;
  TranslatedWords& operator=(const TranslatedWords&) = delete;

 private:
  QTranslator translator_;
};

void SetCaption(QFileDialog& dialog, QFileDialog::DialogLabel label, const String& caption) {
  if (!caption.IsEmpty()) {
    dialog.setLabelText(label, AsCaption(ToQString(caption)));
  }
}

/// Leaves room for the names of the folders, and hides what is about files.
void Simplify(QFileDialog& dialog) {
  for (auto* list : dialog.findChildren<QTreeView*>()) {
    for (int column = 1; column < list->model()->columnCount(); ++column) {
      list->hideColumn(column);
    }
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    // With one column it says nothing, and the toolkit aligns it to the wrong side in Arabic.
    list->setHeaderHidden(true);
  }
  if (auto* splitter = dialog.findChild<QSplitter*>()) {
    splitter->setSizes({kSideBarWidth, kUsualSize.width() - kSideBarWidth});
  }
  for (const char* name : {"fileTypeLabel", "fileTypeCombo"}) {
    if (auto* row = dialog.findChild<QWidget*>(QLatin1String(name))) {
      row->hide();
    }
  }
}

/// The user chooses a folder here, and must not delete, rename or move one by mistake. The
/// toolkit's own setting for this would take away the button for a new folder, too.
void KeepFoldersSafe(QFileDialog& dialog) {
  for (const char* name : {"qt_rename_action", "qt_delete_action"}) {
    if (auto* action = dialog.findChild<QAction*>(QLatin1String(name))) {
      action->setVisible(false);
    }
  }
  for (auto* shortcut : dialog.findChildren<QShortcut*>()) {
    if (shortcut->key() == QKeySequence(Qt::Key_Delete)) {
      shortcut->setEnabled(false);
    }
  }
  for (auto* view : dialog.findChildren<QAbstractItemView*>()) {
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setDragDropMode(QAbstractItemView::NoDragDrop);
  }
  if (auto* sideBar = dialog.findChild<QWidget*>(QLatin1String("sidebar"))) {
    sideBar->setContextMenuPolicy(Qt::NoContextMenu);
  }
}

/// Ctrl+H as in other programs' dialogs.
void AddShortcutForHiddenFolders(QFileDialog& dialog) {
  if (auto* action = dialog.findChild<QAction*>(QLatin1String("qt_show_hidden_action"))) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_H), &dialog);
    QObject::connect(shortcut, &QShortcut::activated, action, &QAction::trigger);
  }
}

/// The publisher's captions may be in another language than the user's session.
Qt::LayoutDirection DirectionOf(const SelectFolderDialog& model) {
  const bool fromTheRight = QLocale::system().textDirection() == Qt::RightToLeft ||
                            ToQString(model.Title()).isRightToLeft() ||
                            ToQString(model.ActionButtonCaption()).isRightToLeft();
  return fromTheRight ? Qt::RightToLeft : Qt::LeftToRight;
}

void SetDirection(QFileDialog& dialog, Qt::LayoutDirection direction) {
  dialog.setLayoutDirection(direction);
  auto* splitter = dialog.findChild<QSplitter*>();
  if (splitter != nullptr && direction == Qt::RightToLeft) {
    // The toolkit places its parts one point too far to the right then, which cuts a border.
    splitter->setContentsMargins(0, 0, 1, 0);
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

void SetUp(QFileDialog& dialog, const SelectFolderDialog& model) {
  // A native dialog wouldn't take the captions.
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setSidebarUrls(PlacesOfUser());
  if (!model.Title().IsEmpty()) {
    dialog.setWindowTitle(AsWindowTitle(ToQString(model.Title())));
  }
  SetCaption(dialog, QFileDialog::Accept, model.ActionButtonCaption());
  SetCaption(dialog, QFileDialog::Reject, model.CancelButtonCaption());
  if (!model.InitialDirectory().IsNil()) {
    dialog.setDirectory(NearestFolder(*model.InitialDirectory()));
  }
  Simplify(dialog);
  KeepFoldersSafe(dialog);
  AddShortcutForHiddenFolders(dialog);
  SetDirection(dialog, DirectionOf(model));
}

}  // namespace

Ref<FolderItem> RunFolderDialog(const SelectFolderDialog& model, QWidget* over) {
  // Before the dialog, which takes its words when it is made.
  const TranslatedWords words;
  LockedIcons icons;  // The dialog uses it until it is destroyed.
  QFileDialog dialog(over);
  dialog.setIconProvider(&icons);
  SetUp(dialog, model);
  dialog.resize(kUsualSize.boundedTo(RoomOnScreen(over).size()));
  PlaceInMiddle(dialog, over);
  const QString accepted = dialog.exec() == QDialog::Accepted ? AcceptedFolder(dialog) : "";
  if (accepted.isEmpty()) {
    return nullptr;
  }
  // Without "..", and without a slash at the end.
  const QString path = QDir(accepted).absolutePath();
  return MakeRef<FolderItem>(QFile::encodeName(QDir::cleanPath(path)).toStdString());
}

}  // namespace zephin
