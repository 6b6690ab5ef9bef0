#ifndef SELECTION_SELECTION_DIALOGS_H_
#define SELECTION_SELECTION_DIALOGS_H_

#include "dialogs/answer_window.h"
#include "setup/limits.h"

/// The two windows in which the user picks: ten rows, a Quit button and a Continue button. They
/// only record how they ended, "OKBtn" for Continue and "Quit" for Quit; the caller fills the rows
/// before and reads them afterwards.
namespace zephin {

/// A row of the choice dialog.
class ChoiceRadio final : public RadioButton {
 public:
  using RadioButton::RadioButton;
};

/// A row of the option dialog.
class OptionCheckBox final : public CheckBox {
 public:
  using CheckBox::CheckBox;
};

/// Lets the user pick one of up to ten choices.
class TChoiceDlg : public AnswerWindow {
 protected:
  void Layout() override;
  void CreateControls() override;
  /// Creates rows and buttons; the rows come first in the tab order.
  virtual void _CreateControls0();

 public:
  /// Row `index`, from 0; nil past the last.
  virtual Ref<zephin::ChoiceRadio> ChoiceRadio(int index) const;
  virtual Ref<PushButton> QuitBtn() const { return Named<PushButton>("QuitBtn"); }
  virtual Ref<PushButton> ContinueBtn() const { return Named<PushButton>("ContinueBtn"); }
  virtual void QuitBtn_Action(PushButton& button);
  virtual void ContinueBtn_Action(PushButton& button);
};

/// Lets the user pick any of up to ten options.
class TOptionsDlg : public AnswerWindow {
 protected:
  void Layout() override;
  void CreateControls() override;
  /// Creates rows and buttons; the buttons come first in the tab order.
  virtual void _CreateControls0();

 public:
  virtual Ref<PushButton> QuitBtn() const { return Named<PushButton>("QuitBtn"); }
  virtual Ref<PushButton> ContinueBtn() const { return Named<PushButton>("ContinueBtn"); }
  /// Row `index`, from 0; nil past the last.
  virtual Ref<zephin::OptionCheckBox> OptionCheckBox(int index) const;
  virtual void QuitBtn_Action(PushButton& button);
  virtual void ContinueBtn_Action(PushButton& button);
};

}  // namespace zephin

#endif  // SELECTION_SELECTION_DIALOGS_H_
