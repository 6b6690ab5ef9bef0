#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QWidget>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "dialogs/message_modal.h"
#include "dialogs/pages.h"
#include "dialogs/yes_no_dialog.h"
#include "platform/qt/peers/window_peer.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/caption_buttons.h"
#include "platform/qt/widgets/look.h"
#include "platform/qt/widgets/text_widget.h"
#include "selection/selection_dialogs.h"
#include "tests/support/stub_run.h"

namespace zephin {
namespace {

using nlohmann::json;

/// The windows of the sample setup with the captions of one language.
class Languages : public testing::TestWithParam<std::string> {
 protected:
  Languages() : window_(run_.BareWindow()) {
    SetUpLook();
    std::ifstream file(std::filesystem::path(ZEPHIN_SAMPLES) / "tour/languages" / GetParam());
    said_ = json::parse(file);
  }

  static String Text(const json& value) {
    std::string text;
    for (const json& line : value.is_array() ? value : json::array({value})) {
      text += (text.empty() ? "" : "\n") + line.get<std::string>();
    }
    return Utf8(text);
  }
  String Label(const char* name) const { return Text(said_.at("fLabels").at(name)); }

  /// Checks that the caption of a widget of this class is not cut and that no letter reaches out of
  /// the widget, even beyond the font's metrics. Returns false for a widget of another class.
  template <class Captioned>
  static bool IsFitting(const QWidget* each) {
    const auto* widget = dynamic_cast<const Captioned*>(each);
    if (widget == nullptr) {
      return false;
    }
    const QString& text = widget->Caption();
    EXPECT_TRUE(widget->IsWhole()) << text.toStdString();
    const int smallest = SmallestReadable(widget->font().pixelSize());
    const qreal room = widget->RoomForCaption();
    const QFont font = FitCaption(text, widget->font(), smallest, room).font;
    const QRectF ink = QFontMetricsF(font).tightBoundingRect(text);
    EXPECT_LE(ink.width(), room + 2) << text.toStdString();
    EXPECT_LE(ink.height(), widget->height() - 2) << text.toStdString();
    return true;
  }

  /// Sets the captions of buttons (button, label) and checks that all texts fit.
  void ExpectFits(Window& window,
                  const std::vector<std::pair<const char*, const char*>>& labels = {}) const {
    for (const auto& [button, label] : labels) {
      RefCast<PushButton>(window.ControlByName(button))->SetCaption(Label(label));
    }
    WindowPeer peer(window);
    int fitting = 0;
    for (const QWidget* widget : peer.findChildren<QWidget*>()) {
      const auto* text = dynamic_cast<const TextWidget*>(widget);
      if (widget->isHidden()) {
        continue;
      }
      EXPECT_TRUE(text == nullptr || text->IsWhole()) << text->Text().toStdString();
      fitting += text != nullptr || IsFitting<CaptionButton>(widget) ||
                 IsFitting<RadioWidget>(widget) || IsFitting<CheckWidget>(widget);
    }
    EXPECT_GE(fitting, 2);
  }

  /// Sets the captions of a dialog's rows.
  template <class Row>
  void Fill(const char* field, const Row& row) {
    int used = 0;
    for (const json& each : said_.at(field)) {
      row(used++)->SetCaption(Text(each.at("caption")));
    }
  }

  test::StubRun run_;
  ZephinStubWindow& window_;
  json said_;
};

TEST_P(Languages, MainWindowShowsAllTextsUncut) {
  window_.URLLabel()->SetText(Text(said_.at("fURLDisplayed")));
  window_.CopyrightLabel()->SetText(Text(said_.at("fCopyright")));
  for (const char* name : {"InfoBtn", "URLLabel", "CopyrightLabel"}) {
    window_.ControlByName(name)->SetVisible(true);
  }
  for (const String& message :
       {Text(said_.at("fMessage")), Label("installing"), Label("pleaseWait")}) {
    window_.MessageLabel()->SetText(message);
    ExpectFits(window_, {{"QuitBtn", "quit"}, {"InstallBtn", "install"}, {"InfoBtn", "info"}});
  }
}

TEST_P(Languages, DialogsShowAllTextsUncut) {
  const auto options = MakeWindow<TOptionsDlg>();
  Fill("fInstallOptions", [&](int index) { return options->OptionCheckBox(index); });
  ExpectFits(*options);
  const auto replace = MakeWindow<YesNoDialog>();
  replace->ConfirmLabel1()->SetText(Label("replaceFirst"));
  replace->ConfirmLabel2()->SetText(Label("replaceSecond"));
  ExpectFits(*replace, {{"CancelBtn", "cancel"}, {"OKBtn", "ok"}});
  const auto question = MakeWindow<MessageModal>();
  question->MessageText()->SetText(Label("nextDisc"));
  ExpectFits(*question);
  for (const char* accept : {"ok", "accept"}) {
    ExpectFits(*MakeWindow<LicenseAgreementWindow>(), {{"QuitBtn", "quit"}, {"OKBtn", accept}});
    ExpectFits(*MakeWindow<THtmlMessageDlg>(), {{"QuitBtn", "quit"}, {"ContinueBtn", accept}});
  }
}

TEST_P(Languages, RowsAreNotCutAndFollowTheReadingDirection) {
  const auto choices = MakeWindow<TChoiceDlg>();
  Fill("fInstallChoices", [&](int index) { return choices->ChoiceRadio(index); });
  ExpectFits(*choices);
  // A caption in another script does not move the mark to the other side.
  choices->ChoiceRadio(1)->SetCaption("Plain");
  const WindowPeer peer(*choices);
  for (int index = 0; index < 2; ++index) {
    EXPECT_EQ(peer.PeerOf(*choices->ChoiceRadio(index))->Widget().isRightToLeft(),
              GetParam() == "ar.json");
  }
}

INSTANTIATE_TEST_SUITE_P(Tour, Languages,
                         testing::Values("ar.json", "de.json", "hi.json", "ja.json"),
                         [](const auto& each) { return each.param.substr(0, 2); });

}  // namespace
}  // namespace zephin
