#ifndef PLATFORM_BUNDLE_GATEKEEPER_DIALOG_H_
#define PLATFORM_BUNDLE_GATEKEEPER_DIALOG_H_

#include "dialogs/answer_window.h"

namespace zephin {

/// Explains that the system runs the bundle from a translocated place, and asks for what is needed
/// to clear the cause. Answers with the name of the button, "OKBtn" or "CancelBtn".
class TGatekeeperTranslocationDlg : public AnswerWindow {
 public:
  Ref<TextField> AppPathEdit() const { return Named<TextField>("AppPathEdit"); }
  /// Not masked, on purpose, so that users can check what they type.
  Ref<TextField> AdminPasswordEdit() const { return Named<TextField>("AdminPasswordEdit"); }

 protected:
  void Layout() override;
  void CreateControls() override;
};

/// Shows the dialog, clears the quarantine attribute with the password if the user says OK, and
/// ends the run in every case: the next start is no longer translocated.
[[noreturn]] void OfferToClearTranslocation();

}  // namespace zephin

#endif  // PLATFORM_BUNDLE_GATEKEEPER_DIALOG_H_
