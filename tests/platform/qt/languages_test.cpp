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
#include "platform/qt/look.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets.h"
#include "platform/qt/window_peer.h"
#include "selection/selection_dialogs.h"
#include "tests/support/stub_run.h"

namespace zephin {
namespace {

using nlohmann::json;

/// The tour's windows with the captions of one language, as the user sees them.
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

  /// A caption is whole and its letters, whose marks may reach further than the font says, are in
  /// the room that its control has for it.
  template <class Captioned>
  static void ExpectCaptionFits(const Captioned& widget) {
    const QString& text = widget.Caption();
    EXPECT_TRUE(widget.IsWhole()) << text.toStdString();
    const FittedCaption fitted = FitCaption(
        text, widget.font(), SmallestReadable(widget.font().pixelSize()), widget.RoomForCaption());
    const QRectF ink = QFontMetricsF(fitted.font).tightBoundingRect(text);
    EXPECT_LE(ink.width(), widget.RoomForCaption() + 2) << text.toStdString();
    EXPECT_LE(ink.height(), widget.height() - 2) << text.toStdString();
  }

  static void ExpectFits(Window& window) {
    WindowPeer peer(window);
    int captions = 0;
    for (const QWidget* widget : peer.findChildren<QWidget*>()) {
      if (widget->isHidden()) {
        continue;
      }
      ++captions;
      if (const auto* button = dynamic_cast<const CaptionButton*>(widget)) {
        ExpectCaptionFits(*button);
      } else if (const auto* radio = dynamic_cast<const RadioWidget*>(widget)) {
        ExpectCaptionFits(*radio);
      } else if (const auto* box = dynamic_cast<const CheckWidget*>(widget)) {
        ExpectCaptionFits(*box);
      } else if (const auto* text = dynamic_cast<const TextWidget*>(widget)) {
        EXPECT_TRUE(text->IsWhole()) << text->Text().toStdString();
      } else {
        --captions;
      }
    }
    EXPECT_GE(captions, 2);
  }

  /// Fills the rows of a dialog and shows no more of them.
  template <class Row>
  void Fill(const char* field, const Row& row) {
    int used = 0;
    for (const json& each : said_.at(field)) {
      row(used++)->SetCaption(Text(each.at("caption")));
    }
    for (int index = used; index < kSelectionRows; ++index) {
      row(index)->SetVisible(false);
    }
  }

  test::StubRun run_;
  ZephinStubWindow& window_;
  json said_;
};

TEST_P(Languages, MainWindowShowsItsTextsWhole) {
  window_.QuitBtn()->SetCaption(Label("quit"));
  window_.InstallBtn()->SetCaption(Label("install"));
  window_.InfoBtn()->SetCaption(Label("info"));
  window_.InfoBtn()->SetVisible(true);
  window_.URLLabel()->SetText(Text(said_.at("fURLDisplayed")));
  window_.URLLabel()->SetVisible(true);
  window_.CopyrightLabel()->SetText(Text(said_.at("fCopyright")));
  window_.CopyrightLabel()->SetVisible(true);
  for (const String& message :
       {Text(said_.at("fMessage")), Label("installing"), Label("pleaseWait")}) {
    window_.MessageLabel()->SetText(message);
    ExpectFits(window_);
  }
}

TEST_P(Languages, DialogsShowTheirTextsWhole) {
  const auto choices = MakeWindow<TChoiceDlg>();
  Fill("fInstallChoices", [&](int index) { return choices->ChoiceRadio(index); });
  ExpectFits(*choices);
  const auto options = MakeWindow<TOptionsDlg>();
  Fill("fInstallOptions", [&](int index) { return options->OptionCheckBox(index); });
  ExpectFits(*options);

  const auto replace = MakeWindow<YesNoDialog>();
  replace->ConfirmLabel1()->SetText(Label("replaceFirst"));
  replace->ConfirmLabel2()->SetText(Label("replaceSecond"));
  replace->CancelBtn()->SetCaption(Label("cancel"));
  replace->OKBtn()->SetCaption(Label("ok"));
  ExpectFits(*replace);
  const auto question = MakeWindow<MessageModal>();
  question->MessageText()->SetText(Label("nextDisc"));
  ExpectFits(*question);

  for (const char* accept : {"ok", "accept"}) {
    const auto plain = MakeWindow<LicenseAgreementWindow>();
    plain->QuitBtn()->SetCaption(Label("quit"));
    plain->OKBtn()->SetCaption(Label(accept));
    ExpectFits(*plain);
    const auto page = MakeWindow<THtmlMessageDlg>();
    page->QuitBtn()->SetCaption(Label("quit"));
    page->ContinueBtn()->SetCaption(Label(accept));
    ExpectFits(*page);
  }
}

TEST_P(Languages, RowsBeginWhereTheScriptDoes) {
  const auto choices = MakeWindow<TChoiceDlg>();
  Fill("fInstallChoices", [&](int index) { return choices->ChoiceRadio(index); });
  // One caption in another script doesn't turn its row round.
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
