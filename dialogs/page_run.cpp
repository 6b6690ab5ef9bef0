#include "dialogs/page_run.h"

#include "dialogs/pages.h"
#include "platform/framework/folder_item.h"
#include "platform/framework/text.h"
#include "util/text_search.h"

namespace zephin {
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
  return TextEquals(dialog->fBtnName, Utf8(accept->Name()));
}

}  // namespace

bool ShowPage(const Page& page) {
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
