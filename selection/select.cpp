#include "app/zephin_stub_window.h"
#include "platform/framework/text.h"
#include "selection/selection_dialogs.h"
#include "setup/lists.h"

namespace zephin {
namespace {

/// Fills one row for each entry and hides the other rows. The buttons move up to the first hidden
/// row, and the window shrinks with them. More than ten entries raise NilObjectException, as there
/// are no more rows.
template <class Dialog, class RowOf>
void Fill(Dialog& dialog, const std::vector<SelectionEntry>& entries, RowOf rowOf) {
  const int count = static_cast<int>(entries.size());
  for (int i = 0; i < count; ++i) {
    rowOf(i)->SetCaption(entries[static_cast<std::size_t>(i)].caption);
    rowOf(i)->SetHelpTag(entries[static_cast<std::size_t>(i)].tip);
  }
  for (int i = count; i < kSelectionRows; ++i) {
    rowOf(i)->SetVisible(false);
  }
  if (count < kSelectionRows) {
    constexpr int kBelowButtons = 40;
    dialog.QuitBtn()->SetTop(rowOf(count)->Top());
    dialog.ContinueBtn()->SetTop(dialog.QuitBtn()->Top());
    dialog.SetHeight(dialog.QuitBtn()->Top() + kBelowButtons);
  }
}

bool PickChoice(ZephinStubWindow& w, String& choice) {
  const Ref<TChoiceDlg> dialog = MakeWindow<TChoiceDlg>();
  const auto row = [&dialog](int i) { return dialog->ChoiceRadio(i); };
  dialog->SetTitle(w.Wording(Caption::ChoiceTitle));
  const std::vector<SelectionEntry> entries = ReadSelectionList(w.fInstallChoices);
  Fill(*dialog, entries, row);
  // Radio buttons without a selection would let the user continue without a choice.
  row(0)->SetValue(true);
  dialog->ShowModal();
  // Read after Quit too; the caller then ignores the result.
  for (int i = 0; i < std::ssize(entries); ++i) {
    if (row(i)->Value()) {
      choice = row(i)->Caption();
    }
  }
  return TextEquals(dialog->fBtnName, "OKBtn");
}

bool PickOptions(ZephinStubWindow& w, String& options) {
  const Ref<TOptionsDlg> dialog = MakeWindow<TOptionsDlg>();
  const auto row = [&dialog](int i) { return dialog->OptionCheckBox(i); };
  dialog->SetTitle(w.Wording(Caption::OptionsTitle));
  const std::vector<SelectionEntry> entries = ReadSelectionList(w.fInstallOptions);
  Fill(*dialog, entries, row);
  dialog->ShowModal();
  options = "";
  for (int i = 0; i < std::ssize(entries); ++i) {
    if (row(i)->Value()) {
      options += options.IsEmpty() ? "" : ",";
      options += row(i)->Caption();
    }
  }
  return TextEquals(dialog->fBtnName, "OKBtn");
}

}  // namespace

bool ZephinStubWindow::SelectChoiceAndOptions(String& choice, String& options) {
  if (!fInstallChoices.IsEmpty() && !PickChoice(*this, choice)) {
    return false;
  }
  return fInstallOptions.IsEmpty() || PickOptions(*this, options);
}

}  // namespace zephin
