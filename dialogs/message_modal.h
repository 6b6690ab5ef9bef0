#ifndef DIALOGS_MESSAGE_MODAL_H_
#define DIALOGS_MESSAGE_MODAL_H_

#include "platform/framework/controls.h"
#include "platform/framework/window.h"

namespace zephin {

/// A text and up to three buttons in a row at the bottom right. Any button ends it. See conflict.h
/// for its two uses, a question fitted to its text and an error message of fixed size.
class MessageModal : public Window {
 public:
  /// Caption of the button that closed the window; empty before.
  String fBtnName;
  /// False for an error message. Nothing reads it.
  bool fIsInfoDialog = true;

  Ref<PushButton> Btn1() const { return Named<PushButton>("Btn1"); }
  Ref<PushButton> Btn2() const { return Named<PushButton>("Btn2"); }
  Ref<PushButton> Btn3() const { return Named<PushButton>("Btn3"); }
  Ref<Label> MessageText() const { return Named<Label>("MessageText"); }

 protected:
  void Layout() override;
  void CreateControls() override;
};

/// The one instance that is made when it is first asked for. It is hidden by its buttons, not
/// closed, and keeps what each use has set.
Ref<MessageModal> ImplicitMessageModal();

/// Drops the implicit instance with the application that it was shown by.
void CloseImplicitMessageModal();

}  // namespace zephin

#endif  // DIALOGS_MESSAGE_MODAL_H_
