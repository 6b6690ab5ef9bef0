#include "app/zephin_stub_window.h"
#include "dialogs/pages.h"
#include "platform/framework/application.h"

namespace zephin {

void ZephinStubWindow::OKBtnClicked() {
  bool proceed = true;
  String choice;
  String options;
  if (!fPreInstallNotes.IsEmpty()) {
    // The HTML form says "I Agree" and the plain one "OK", with the same caption, on purpose:
    // publishers have written their captions for that.
    proceed = ShowPage({.text = fPreInstallNotes,
                        .title = Wording(Caption::PreNotesTitle),
                        .quitCaption = Custom(Caption::Quit),
                        .acceptCaptionInHtml = CustomLabel("I Agree", Custom(Caption::Ok)),
                        .acceptCaptionInPlain = Wording(Caption::Ok)});
  }
  if (proceed && !fAgreement.IsEmpty()) {
    const String accept = Wording(Caption::Accept);
    proceed = ShowPage({.text = fAgreement,
                        .title = Wording(Caption::AgreementTitle),
                        .quitCaption = Custom(Caption::Quit),
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
  const String accept = Wording(Caption::Ok);
  ShowPage({.text = fInfo,
            .title = Wording(Caption::InfoTitle),
            .quitButton = QuitButton::Hidden,
            .acceptCaptionInHtml = accept,
            .acceptCaptionInPlain = accept});
}

void ZephinStubWindow::ShowInstallinProgress() {
  MessageLabel()->SetText(Wording(Caption::Installing));
  SetFocus();
  MessageLabel()->Refresh(true);
  Refresh(true);
}

}  // namespace zephin
