#include "platform/qt/peers/window_peer.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>
#include <tuple>
#include <vector>

#include "dialogs/message_modal.h"
#include "dialogs/pages.h"
#include "dialogs/yes_no_dialog.h"
#include "platform/bundle/gatekeeper_dialog.h"
#include "platform/qt/peers/accessibility.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/caption_buttons.h"
#include "platform/qt/widgets/look.h"
#include "selection/selection_dialogs.h"
#include "tests/support/stub_run.h"

namespace zephin {
namespace {

class Peers : public testing::Test {
 protected:
  Peers() : window_(run_.BareWindow()) {
    SetUpLook();
    SetUpAccessibility();
  }

  test::StubRun run_;
  ZephinStubWindow& window_;
};

TEST_F(Peers, FirstFocusIsTheDefaultButtonTheChosenRowOrTheFirstField) {
  const auto choices = MakeWindow<TChoiceDlg>();
  choices->ChoiceRadio(1)->SetValue(true);
  const auto question = MakeWindow<MessageModal>();
  question->Btn3()->SetDefault(true);
  const std::vector<std::pair<Window*, Ref<Control>>> rows{
      {&window_, window_.InstallBtn()},
      {&*choices, choices->ChoiceRadio(1)},
      {&*question, question->Btn3()},
  };
  for (const auto& [window, expected] : rows) {
    WindowPeer peer(*window);
    peer.Appear(nullptr);
    EXPECT_EQ(peer.focusWidget(), &peer.PeerOf(*expected)->Widget()) << window->Title().Bytes();
  }
  for (const auto& [window, expected] : std::vector<std::pair<Ref<Window>, const char*>>{
           {MakeWindow<YesNoDialog>(), "OKBtn"},
           {MakeWindow<THtmlMessageDlg>(), "ContinueBtn"},
           {MakeWindow<LicenseAgreementWindow>(), "OKBtn"},
           {MakeWindow<TGatekeeperTranslocationDlg>(), "AppPathEdit"}}) {
    WindowPeer peer(*window);
    peer.Appear(nullptr);
    EXPECT_EQ(peer.focusWidget(), &peer.PeerOf(*window->ControlByName(expected))->Widget())
        << expected;
  }
  const auto options = MakeWindow<TOptionsDlg>();
  WindowPeer peer(*options);
  peer.Appear(nullptr);
  EXPECT_EQ(peer.focusWidget(), &peer.PeerOf(*options->OptionCheckBox(0))->Widget());
}

TEST_F(Peers, WholeRowTakesTheClick) {
  const auto choices = MakeWindow<TChoiceDlg>();
  const auto options = MakeWindow<TOptionsDlg>();
  WindowPeer choicePeer(*choices);
  WindowPeer optionPeer(*options);
  for (QWidget* row : {&choicePeer.PeerOf(*choices->ChoiceRadio(1))->Widget(),
                       &optionPeer.PeerOf(*options->OptionCheckBox(1))->Widget()}) {
    row->window()->show();
    auto* button = static_cast<QAbstractButton*>(row);
    ASSERT_FALSE(button->isChecked());
    QTest::mouseClick(row, Qt::LeftButton, {}, QPoint(row->width() - 2, 2));
    EXPECT_TRUE(button->isChecked());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(row)->rect().size(), row->size());
  }
  EXPECT_TRUE(choices->ChoiceRadio(1)->Value());
  EXPECT_TRUE(options->OptionCheckBox(1)->Value());
}

TEST_F(Peers, ToolTipShowsAnElidedCaptionAboveTheHelpTag) {
  const String longCaption = Utf8(std::string(90, 'W'));
  const std::vector<std::tuple<String, String, String>> rows{
      // caption, help tag, expected lines of the tip
      {"Quit", "", ""},
      {"Quit", "Ends it", "Ends it"},
      {longCaption, "", longCaption},
      {longCaption, "Ends it", longCaption + "\nEnds it"},
  };
  for (const auto& [caption, tag, expected] : rows) {
    window_.QuitBtn()->SetCaption(caption);
    window_.QuitBtn()->SetHelpTag(tag);
    WindowPeer peer(window_);
    peer.show();
    QWidget& button = peer.PeerOf(*window_.QuitBtn())->Widget();
    QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), button.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&button, &help);
    const QString shown = QToolTip::isVisible() ? QToolTip::text() : QString();
    EXPECT_EQ(shown.contains(ToQString(expected)) && shown.isEmpty() == expected.IsEmpty(), true)
        << shown.toStdString();
    QToolTip::hideText();
    QTest::qWait(0);
  }
}

TEST_F(Peers, BarAndRowsFollowTheReadingDirection) {
  for (const char* caption : {"Install", "تثبيت"}) {
    const bool rightToLeft = ToQString(Utf8(caption)).isRightToLeft();
    window_.InstallBtn()->SetCaption(Utf8(caption));
    WindowPeer peer(window_);
    EXPECT_EQ(peer.PeerOf(*window_.ProgressBar1())->Widget().isRightToLeft(), rightToLeft);
    // A caption in another script does not move the mark to the other side.
    const auto choices = MakeWindow<TChoiceDlg>();
    choices->ChoiceRadio(0)->SetCaption(Utf8(caption));
    choices->ChoiceRadio(1)->SetCaption("Plain");
    const WindowPeer rows(*choices);
    for (const int row : {0, 1}) {
      EXPECT_EQ(rows.PeerOf(*choices->ChoiceRadio(row))->Widget().isRightToLeft(), rightToLeft);
    }
  }
}

TEST_F(Peers, FontOfButtonsDoesNotChangeWhenOneIsHidden) {
  window_.InfoBtn()->SetCaption("Weitere Informationen");
  const auto pictureOfQuit = [&](bool visible) {
    window_.InfoBtn()->SetVisible(visible);
    WindowPeer peer(window_);
    return peer.PeerOf(*window_.QuitBtn())->Widget().grab().toImage();
  };
  EXPECT_EQ(pictureOfQuit(true), pictureOfQuit(false));
}

TEST_F(Peers, MainWindowIsAFrameAndOthersAreDialogs) {
  WindowPeer main(window_);
  const auto page = MakeWindow<LicenseAgreementWindow>();
  WindowPeer dialog(*page);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&main)->role(), QAccessible::Window);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&dialog)->role(), QAccessible::Dialog);
}

}  // namespace
}  // namespace zephin
