#include "platform/bundle/gatekeeper_dialog.h"

#include "platform/framework/application.h"
#include "platform/framework/shell.h"
#include "platform/framework/text.h"
#include "util/globals.h"

namespace zephin {
namespace {

String Explanation() {
  const String& line = ViewConst::gLineBreak;
  return "Gatekeeper is blocking this application due to the process in which it was downloaded to "
         "your computer, because it was launched from within the Downloads folder or because of a "
         "GateKeeper OS bug.  " +
         line + line +
         "To correct the issue, first click Cancel and move this app to the Applications folder.  "
         "If this dialog is presented again, carefully enter the exact path to the Application "
         "including the suffix .app and your Admin account password below, then click OK.";
}

}  // namespace

void TGatekeeperTranslocationDlg::Layout() {
  SetTitle("Gatekeeper Translocation Issue");
  SetWidth(600);
  SetHeight(237);
}

void TGatekeeperTranslocationDlg::CreateControls() {
  const Ref<Label> explanation = Add<Label>("Label1", {20, 19, 560, 127});
  explanation->SetMultiline(true);
  explanation->SetText(Explanation());
  Add<Label>("Label2", {20, 164, 100, 20})->SetText("Application Path:");
  Add<Label>("Label3", {20, 196, 100, 20})->SetText("Admin Password:");
  const Ref<TextField> path = Add<TextField>("AppPathEdit", {139, 163, 441, 22});
  path->SetHint("/Applications/AppFolder/AppName.app");
  path->SetTabIndex(3);
  Add<TextField>("AdminPasswordEdit", {139, 195, 147, 22})->SetTabIndex(4);
  const auto addButton = [this](const char* name, int left, const char* caption, int tabIndex) {
    Ref<PushButton> button = Add<PushButton>(name, {left, 196, 80, 20});
    button->SetCaption(caption);
    // Both, so that Escape presses whichever comes first; OK is the default button nevertheless.
    button->SetCancel(true);
    button->SetTabIndex(tabIndex);
    AnswerWithName(*button);
    return button;
  };
  addButton("CancelBtn", 408, "Cancel", 5);
  addButton("OKBtn", 500, "OK", 6)->SetDefault(true);
}

void OfferToClearTranslocation() {
  const Ref<TGatekeeperTranslocationDlg> dialog = MakeWindow<TGatekeeperTranslocationDlg>();
  dialog->ShowModal();
  if (TextEquals(dialog->fBtnName, "OKBtn")) {
    // What the user typed becomes a part of the command as it is: it is the user's own shell, and a
    // quote in it only breaks the command.
    Shell shell;
    shell.Execute("echo \"" + dialog->AdminPasswordEdit()->Text() +
                  "\" | sudo -S xattr -r -d com.apple.quarantine \"" +
                  dialog->AppPathEdit()->Text() + "\"");
  }
  // Also after OK: the attribute counts only when the bundle is started again.
  Quit(0);
}

}  // namespace zephin
