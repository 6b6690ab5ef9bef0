#include "dialogs/yes_no_dialog.h"

namespace zephin {

void YesNoDialog::Layout() {
  SetTitle("Confirmation");
  SetWidth(452);
  SetHeight(155);
}

void YesNoDialog::CreateControls() {
  const auto addButton = [this](const char* name, const Bounds& place, const char* caption) {
    Ref<PushButton> button = Add<PushButton>(name, place);
    button->SetCaption(caption);
    AnswerWithName(*button);
    return button;
  };
  const auto addLabel = [this](const char* name, const Bounds& place, const char* text) {
    Ref<Label> label = Add<Label>(name, place);
    label->SetText(text);
    return label;
  };
  const Ref<PushButton> ok = addButton("OKBtn", {352, 115, 80, 20}, "OK");
  ok->SetDefault(true);
  ok->SetTabIndex(0);
  addButton("CancelBtn", {260, 115, 80, 20}, "Cancel")->SetTabIndex(1);
  addLabel("ConfirmLabel1", {20, 14, 412, 20}, "Destination folder already exists.");
  addLabel("ConfirmLabel2", {20, 37, 412, 20}, "Delete folder to continue?");
  addLabel("ConfirmLabel3", {20, 61, 412, 42}, "Target Folder Path")->SetMultiline(true);
}

}  // namespace zephin
