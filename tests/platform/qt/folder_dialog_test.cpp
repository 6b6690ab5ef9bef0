#include "platform/qt/session/folder_dialog.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <filesystem>
#include <functional>

#include "platform/framework/application.h"
#include "platform/qt/session/places.h"
#include "platform/qt/widgets/locked_icons.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scripted_desktop.h"

namespace zephin {
namespace {

namespace fs = std::filesystem;

class FolderDialog : public testing::Test {
 protected:
  FolderDialog() : app_(desktop_, Machine()) {
    fs::create_directories(scratch_.Path() / "games" / ".hidden");
  }

  /// Opens the dialog in the scratch folder, lets `user` act on it, and cancels it.
  void Run(const char* caption, const std::function<void(QFileDialog&)>& user) {
    SelectFolderDialog model;
    model.SetActionButtonCaption(Utf8(caption));
    model.SetInitialDirectory(MakeRef<FolderItem>(scratch_.Path().string()));
    bool acted = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      user(*dialog);
      acted = true;
      dialog->reject();
    });
    EXPECT_TRUE(RunFolderDialog(model, nullptr).IsNil());
    EXPECT_TRUE(acted);
  }

  test::ScratchFolder scratch_;
  test::ScriptedDesktop desktop_;
  Application app_;
};

TEST_F(FolderDialog, NoKeyDeletesOrRenamesAFolder) {
  Run("Select", [&](QFileDialog& dialog) {
    auto* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
    ASSERT_NE(list, nullptr);
    QModelIndex games;
    ASSERT_TRUE(QTest::qWaitFor([&] {
      const auto rows = list->model()->match(list->model()->index(0, 0, list->rootIndex()),
                                             Qt::DisplayRole, QStringLiteral("games"));
      games = rows.value(0);
      return games.isValid();
    }));
    list->setCurrentIndex(games);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_F2);
    EXPECT_EQ(list->findChild<QLineEdit*>(), nullptr);
    QTimer::singleShot(50, [] {
      if (auto* question = QApplication::activeModalWidget();
          qobject_cast<QFileDialog*>(question) == nullptr) {
        ADD_FAILURE() << "asks whether to delete";
        question->close();
      }
    });
    QTest::keyClick(list, Qt::Key_Delete);
    QTest::qWait(100);
    for (const char* name : {"qt_rename_action", "qt_delete_action"}) {
      EXPECT_FALSE(dialog.findChild<QAction*>(QLatin1String(name))->isVisible()) << name;
    }
    EXPECT_TRUE(dialog.findChild<QAction*>(QStringLiteral("qt_new_folder_action"))->isVisible());
  });
  EXPECT_TRUE(fs::exists(scratch_.Path() / "games"));
}

TEST_F(FolderDialog, CtrlHShowsHiddenFolders) {
  Run("Select", [](QFileDialog& dialog) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    for (const bool shown : {true, false}) {
      QTest::keyClick(&dialog, Qt::Key_H, Qt::ControlModifier);
      EXPECT_EQ(dialog.filter().testFlag(QDir::Hidden), shown);
    }
  });
}

TEST_F(FolderDialog, IsRightToLeftInArabicAndFitsTheScreen) {
  for (const auto& [caption, expected] :
       {std::pair("Select", Qt::LeftToRight), std::pair("اختيار", Qt::RightToLeft)}) {
    Run(caption, [expected = expected](QFileDialog& dialog) {
      EXPECT_EQ(dialog.layoutDirection(), expected);
      EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.geometry()));
      const auto* sideBar = dialog.findChild<QWidget*>(QStringLiteral("sidebar"));
      EXPECT_TRUE(sideBar->parentWidget()->rect().contains(sideBar->geometry())) << "is cut";
    });
  }
}

TEST(BookmarksIn, ReturnsLocalFoldersInOrder) {
  EXPECT_EQ(BookmarksIn("file:///b%20c/ Name of it\nsftp://host/x\n\nnonsense\nfile:///a"),
            (QList<QUrl>{QUrl::fromLocalFile("/b c"), QUrl::fromLocalFile("/a")}));
  EXPECT_TRUE(BookmarksIn("").isEmpty());
}

TEST(LockedIcons, AreDifferentForUnwritableFolders) {
  const test::ScratchFolder scratch;
  const LockedIcons icons;
  const auto iconOf = [&](const char* path) {
    return icons.icon(QFileInfo(QString::fromUtf8(path))).pixmap(16).toImage();
  };
  // Not even root can write there.
  EXPECT_EQ(iconOf("/proc/self") == iconOf(scratch.Path().c_str()),
            access("/proc/self", W_OK) == 0);
}

}  // namespace
}  // namespace zephin
