#include "selection/selection_dialogs.h"

namespace zephin {
namespace {

constexpr const char* kChoiceRow = "ChoiceRadio";
constexpr const char* kOptionRow = "OptionCheckBox";
constexpr Locks kTopLeft{.left = true, .top = true};
constexpr Bounds kQuitPlace{148, 343, 80, 20};
constexpr Bounds kContinuePlace{240, 343, 80, 20};

/// All ten rows exist in the design; the flow hides those without an entry.
Bounds RowPlace(int row) {
  constexpr int kFirstTop = 14;
  constexpr int kRowHeight = 32;
  return {20, kFirstTop + kRowHeight * row, 300, 20};
}

void LayOut(Window& window, const char* title) {
  window.SetTitle(title);
  window.SetWidth(340);
  window.SetHeight(383);
  window.SetMinimumSize(64, 64);
  window.SetMaximumSize(32000, 32000);
  window.SetType(WindowType::MovableModal);
}

/// Sets captions and handlers of the buttons. They take `firstTab` and the next place in the tab
/// order.
template <class Dialog>
void SetUpButtons(Dialog& dialog, int firstTab, const Ref<PushButton>& quit,
                  const Ref<PushButton>& goOn) {
  quit->SetCaption("Quit");
  quit->SetTabIndex(firstTab);
  quit->Action = [&dialog](PushButton& button) { dialog.QuitBtn_Action(button); };
  goOn->SetCaption("Continue");
  goOn->SetDefault(true);
  goOn->SetTabIndex(firstTab + 1);
  goOn->Action = [&dialog](PushButton& button) { dialog.ContinueBtn_Action(button); };
}

}  // namespace

void TChoiceDlg::Layout() {
  LayOut(*this, "Pick One Choice");
}

void TChoiceDlg::CreateControls() {
  _CreateControls0();
}

void TChoiceDlg::_CreateControls0() {
  for (int i = 0; i < kSelectionRows; ++i) {
    // Created before the buttons: the Tab key goes through the rows first.
    const auto row = Add<zephin::ChoiceRadio>(kChoiceRow, RowPlace(i), i);
    row->SetCaption("Untitled");
    row->SetTabIndex(i);
    row->SetLockedEdges(kTopLeft);
  }
  SetUpButtons(*this, 10, Add<PushButton>("QuitBtn", kQuitPlace),
               Add<PushButton>("ContinueBtn", kContinuePlace));
}

Ref<ChoiceRadio> TChoiceDlg::ChoiceRadio(int index) const {
  return Named<zephin::ChoiceRadio>(kChoiceRow, index);
}

void TChoiceDlg::QuitBtn_Action(PushButton& /*button*/) {
  Answer("Quit");
}

void TChoiceDlg::ContinueBtn_Action(PushButton& /*button*/) {
  Answer("OKBtn");
}

void TOptionsDlg::Layout() {
  LayOut(*this, "Select Options");
}

void TOptionsDlg::CreateControls() {
  _CreateControls0();
}

void TOptionsDlg::_CreateControls0() {
  // Here the buttons come first, also for the Tab key.
  SetUpButtons(*this, 0, Add<PushButton>("QuitBtn", kQuitPlace),
               Add<PushButton>("ContinueBtn", kContinuePlace));
  for (int i = 0; i < kSelectionRows; ++i) {
    const auto row = Add<zephin::OptionCheckBox>(kOptionRow, RowPlace(i), i);
    row->SetCaption("Untitled");
    row->SetTabIndex(i + 2);
    row->SetLockedEdges(kTopLeft);
  }
}

Ref<OptionCheckBox> TOptionsDlg::OptionCheckBox(int index) const {
  return Named<zephin::OptionCheckBox>(kOptionRow, index);
}

void TOptionsDlg::QuitBtn_Action(PushButton& /*button*/) {
  Answer("Quit");
}

void TOptionsDlg::ContinueBtn_Action(PushButton& /*button*/) {
  Answer("OKBtn");
}

}  // namespace zephin
