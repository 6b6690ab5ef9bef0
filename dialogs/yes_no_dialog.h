#ifndef DIALOGS_YES_NO_DIALOG_H_
#define DIALOGS_YES_NO_DIALOG_H_

#include "dialogs/answer_window.h"

namespace zephin {

/// Asks whether an existing target folder may be deleted; answers with the button's name, "OKBtn"
/// or "CancelBtn". The function ViewConst::YesNoDialog, which asks any question, doesn't use it.
class YesNoDialog : public AnswerWindow {
 public:
  Ref<PushButton> OKBtn() const { return Named<PushButton>("OKBtn"); }
  Ref<PushButton> CancelBtn() const { return Named<PushButton>("CancelBtn"); }
  Ref<Label> ConfirmLabel1() const { return Named<Label>("ConfirmLabel1"); }  ///< What is the case.
  Ref<Label> ConfirmLabel2() const { return Named<Label>("ConfirmLabel2"); }  ///< The question.
  Ref<Label> ConfirmLabel3() const {
    return Named<Label>("ConfirmLabel3");
  }  ///< The folder's path.

 protected:
  void Layout() override;
  void CreateControls() override;
};

}  // namespace zephin

#endif  // DIALOGS_YES_NO_DIALOG_H_
