#ifndef DIALOGS_ANSWER_WINDOW_H_
#define DIALOGS_ANSWER_WINDOW_H_

#include "platform/framework/controls.h"
#include "platform/framework/window.h"

namespace zephin {

/// A modal window that is answered with a button. The button records a word and hides the window;
/// it doesn't close it, so that whoever has shown the window can still read its controls.
class AnswerWindow : public Window {
 public:
  /// The word of the button that answered; empty before. Each window says which words it has.
  String fBtnName;

  /// Records the word and hides the window, which ends its modal run.
  void Answer(const String& word) {
    fBtnName = word;
    Hide();
  }

 protected:
  /// Has the button answer with its own name.
  void AnswerWithName(PushButton& button) {
    button.Action = [this](PushButton& pressed) { Answer(Utf8(pressed.Name())); };
  }
};

}  // namespace zephin

#endif  // DIALOGS_ANSWER_WINDOW_H_
