#ifndef DIALOGS_MESSAGE_MODAL_H_
#define DIALOGS_MESSAGE_MODAL_H_

#include "dialogs/answer_window.h"

namespace zephin {

/// A text and up to three buttons in a row at the bottom right. Each button answers with its
/// caption. See conflict.h for its two uses, a question fitted to its text and an error message of
/// fixed size.
class MessageModal : public AnswerWindow {
 public:
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

/// The one instance that is made when it is first asked for. It keeps what each use has set.
Ref<MessageModal> ImplicitMessageModal();

/// Destroys the implicit instance. Called before the application is destroyed.
void CloseImplicitMessageModal();

namespace ViewConst {

/// Fits the window to the text's length in characters, by five size classes, and closes the row of
/// buttons up towards the right. With Btn3 hidden, Btn1 and Btn2 get the same place.
void MessageModalStartSize(MessageModal& dialog, const String& text);
/// Takes the changes back. A short text with a line break gets more back than it lost; the window
/// is no longer on the screen then.
void MessageModalEndSize(MessageModal& dialog, const String& text);

}  // namespace ViewConst

}  // namespace zephin

#endif  // DIALOGS_MESSAGE_MODAL_H_
