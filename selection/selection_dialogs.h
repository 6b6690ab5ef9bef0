#ifndef SELECTION_SELECTION_DIALOGS_H_
#define SELECTION_SELECTION_DIALOGS_H_

#include "platform/framework/controls.h"
#include "platform/framework/window.h"
#include "setup/limits.h"

/// The two windows in which the user picks: ten rows, a Quit and a Continue button, and no logic
/// but recording which button ended them. Whoever shows them fills and reads the rows.
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

/// Picks one of up to ten choices.
class TChoiceDlg : public Window {
 public:
  /// The word of the button that ended it: "OKBtn" or "Quit"; empty before.
  String fBtnName;

 protected:
  void Layout() override;
  void CreateControls() override;
  virtual void _CreateControls0();

 public:
  /// Row `index`, from 0; nil past the last.
  virtual Ref<zephin::ChoiceRadio> ChoiceRadio(int index) const;
  virtual Ref<PushButton> QuitBtn() const { return Named<PushButton>("QuitBtn"); }
  virtual Ref<PushButton> ContinueBtn() const { return Named<PushButton>("ContinueBtn"); }
  virtual void QuitBtn_Action(PushButton& button);
  virtual void ContinueBtn_Action(PushButton& button);
};

/// Picks any of up to ten options.
class TOptionsDlg : public Window {
 public:
  /// The word of the button that ended it: "OKBtn" or "Quit"; empty before.
  String fBtnName;

 protected:
  void Layout() override;
  void CreateControls() override;
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
