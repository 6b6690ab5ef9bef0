#ifndef DIALOGS_PAGES_H_
#define DIALOGS_PAGES_H_

#include "dialogs/answer_window.h"
#include "platform/framework/string.h"

/// The two windows that show a publisher's long text: one page, a button to go on and one to quit,
/// which may be hidden. Neither checks anything; their buttons bear different names, so that what
/// counts as accepted depends on the class. See page_run.h for their use.
namespace zephin {

/// A page in HTML. Answers with the name of the button, "ContinueBtn" or "QuitBtn".
class THtmlMessageDlg : public AnswerWindow {
 public:
  Ref<HTMLViewer> MyHTMLViewer() const { return Named<HTMLViewer>("MyHTMLViewer"); }
  Ref<PushButton> ContinueBtn() const { return Named<PushButton>("ContinueBtn"); }
  Ref<PushButton> QuitBtn() const { return Named<PushButton>("QuitBtn"); }

 protected:
  void Layout() override;
  void CreateControls() override;
};

/// A page in plain text. Answers with the name of the button, "OKBtn" or "QuitBtn".
class LicenseAgreementWindow : public AnswerWindow {
 public:
  Ref<TextArea> AgreementEdit() const { return Named<TextArea>("AgreementEdit"); }
  Ref<PushButton> QuitBtn() const { return Named<PushButton>("QuitBtn"); }
  Ref<PushButton> OKBtn() const { return Named<PushButton>("OKBtn"); }

 protected:
  void Layout() override;
  void CreateControls() override;
};

enum class QuitButton { Shown, Hidden };

/// A publisher's page with its title and captions. It is shown as HTML if the text contains
/// "<HTML>" anywhere, in any letter case, and as plain text otherwise.
struct Page {
  String text;
  String title;
  QuitButton quitButton = QuitButton::Shown;
  String quitCaption = {};  ///< Empty: the button's own.
  String acceptCaptionInHtml;
  String acceptCaptionInPlain;
};

/// Shows the page modally. True if its accept button closed it.
bool ShowPage(const Page& page);

}  // namespace zephin

#endif  // DIALOGS_PAGES_H_
