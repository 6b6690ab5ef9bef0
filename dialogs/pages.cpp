#include "dialogs/pages.h"

#include "platform/framework/folder_item.h"
#include "platform/framework/text.h"
#include "util/texts.h"

namespace zephin {
namespace {

constexpr Locks kAllEdges{true, true, true, true};
constexpr Locks kBottomRight{false, false, true, true};
/// The desktop chooses a place.
constexpr int kDefaultPlace = 1;

void SetUpButton(const Ref<PushButton>& button, const char* caption, int tabIndex) {
  button->SetCaption(caption);
  button->SetTabIndex(tabIndex);
  button->SetLockedEdges(kBottomRight);
}

}  // namespace

void THtmlMessageDlg::Layout() {
  SetWidth(762);
  SetHeight(511);
  SetResizeable(true);
  SetMinimumSize(64, 64);
  SetDefaultLocation(kDefaultPlace);
}

void THtmlMessageDlg::CreateControls() {
  const Ref<HTMLViewer> view = Add<HTMLViewer>("MyHTMLViewer", {0, 0, 762, 460});
  view->SetTabIndex(0);
  view->SetLockedEdges(kAllEdges);
  const Ref<PushButton> accept = Add<PushButton>("ContinueBtn", {642, 472, 100, 22});
  SetUpButton(accept, "Continue", 1);
  AnswerWithName(*accept);
  accept->SetDefault(true);
  const Ref<PushButton> quit = Add<PushButton>("QuitBtn", {530, 472, 100, 22});
  SetUpButton(quit, "Quit", 2);
  AnswerWithName(*quit);
  quit->SetCancel(true);
}

void LicenseAgreementWindow::Layout() {
  SetTitle("License Agreement");
  SetWidth(690);
  SetHeight(410);
  SetResizeable(true);
  // The design size: below it the buttons would cover the text.
  SetMinimumSize(690, 410);
}

void LicenseAgreementWindow::CreateControls() {
  const Ref<TextArea> text = Add<TextArea>("AgreementEdit", {20, 14, 650, 344});
  text->SetReadOnly(true);
  text->SetTabIndex(1);
  text->SetLockedEdges(kAllEdges);
  const Ref<PushButton> quit = Add<PushButton>("QuitBtn", {498, 370, 80, 20});
  SetUpButton(quit, "Quit", 2);
  AnswerWithName(*quit);
  const Ref<PushButton> accept = Add<PushButton>("OKBtn", {590, 370, 80, 20});
  SetUpButton(accept, "I Agree", 3);
  AnswerWithName(*accept);
  accept->SetDefault(true);
}

namespace {

/// Puts the words in and runs the dialog. True if the accept button closed it.
template <class Dialog, class Content>
bool Run(const Ref<Dialog>& dialog, const Ref<PushButton>& accept, const Page& page,
         const String& acceptCaption, Content setContent) {
  dialog->SetTitle(page.title);
  const Ref<PushButton> quit = dialog->QuitBtn();
  if (!page.quitCaption.IsEmpty()) {
    quit->SetCaption(page.quitCaption);
  }
  quit->SetVisible(page.quitButton == QuitButton::Shown);
  accept->SetCaption(acceptCaption);
  setContent();
  dialog->ShowModal();
  // A window that was closed in any other way has no answer, which counts as a refusal.
  return TextEquals(dialog->fBtnName, Utf8(accept->Name()));
}

}  // namespace

bool ShowPage(const Page& page) {
  // The publisher marks HTML in the text itself; there is no field for it in the record.
  if (ViewConst::Pos("<HTML>", page.text) > 0) {
    const Ref<THtmlMessageDlg> dialog = MakeWindow<THtmlMessageDlg>();
    return Run(dialog, dialog->ContinueBtn(), page, page.acceptCaptionInHtml,
               [&] { dialog->MyHTMLViewer()->LoadPage(page.text, GetTemporaryFolderItem()); });
  }
  const Ref<LicenseAgreementWindow> dialog = MakeWindow<LicenseAgreementWindow>();
  return Run(dialog, dialog->OKBtn(), page, page.acceptCaptionInPlain,
             [&] { dialog->AgreementEdit()->SetText(page.text); });
}

}  // namespace zephin
