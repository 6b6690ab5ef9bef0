#include "app/zephin_stub_window.h"
#include "dialogs/page_run.h"
#include "platform/framework/application.h"
#include "util/text_search.h"

namespace zephin {

void ZephinStubWindow::QuitBtn_Action(PushButton& /*button*/) {
  Quit(0);
}

void ZephinStubWindow::InfoBtn_Action(PushButton& /*button*/) {
  InfoBtnClicked();
}

void ZephinStubWindow::InstallBtn_Action(PushButton& /*button*/) {
  OKBtnClicked();
  Quit(0);
}

bool ZephinStubWindow::URLLabel_MouseDown(Label& /*label*/, int /*x*/, int /*y*/) {
  if (!fURLActual.IsEmpty()) {
    ShowURL(ViewConst::Pos("http", fURLActual) == 0 ? "http://" + fURLActual : fURLActual);
  }
  return false;
}

void ZephinStubWindow::OKBtnClicked() {
  bool proceed = true;
  String choice;
  String options;
  if (!fPreInstallNotes.IsEmpty()) {
    // The web form says "I Agree" and the plain one "OK", with the same label: meant so.
    proceed = ShowPage({.text = fPreInstallNotes,
                        .title = CustomLabel("Pre-Installation Notes", fLabels(25)),
                        .quitCaption = fLabels(1),
                        .acceptCaptionInHtml = CustomLabel("I Agree", fLabels(4)),
                        .acceptCaptionInPlain = CustomLabel("OK", fLabels(4))});
  }
  if (proceed && !fAgreement.IsEmpty()) {
    const String accept = CustomLabel("I Agree", fLabels(5));
    proceed = ShowPage({.text = fAgreement,
                        .title = CustomLabel("License Agreement", fLabels(7)),
                        .quitCaption = fLabels(1),
                        .acceptCaptionInHtml = accept,
                        .acceptCaptionInPlain = accept});
  }
  if (proceed) {
    proceed = SelectChoiceAndOptions(choice, options);
  }
  if (proceed) {
    ExpandFolder();
    ExpandChoiceAndOptions(choice, options);
    Quit(0);
  }
}

void ZephinStubWindow::InfoBtnClicked() {
  const String accept = CustomLabel("OK", fLabels(4));
  ShowPage({.text = fInfo,
            .title = CustomLabel("Information", fLabels(8)),
            .quitButton = QuitButton::Hidden,
            .acceptCaptionInHtml = accept,
            .acceptCaptionInPlain = accept});
}

String ZephinStubWindow::CustomLabel(const String& builtIn, const String& custom) const {
  return custom.IsEmpty() ? builtIn : custom;
}

}  // namespace zephin
