#include "dialogs/message_modal.h"

namespace zephin {
namespace {

constexpr int kCentreOfMainScreen = 4;

Ref<MessageModal>& Implicit() {
  static Ref<MessageModal> instance;
  return instance;
}

}  // namespace

void MessageModal::Layout() {
  SetTitle("Error Message");
  SetWidth(572);
  SetHeight(243);
  SetDefaultLocation(kCentreOfMainScreen);
}

void MessageModal::CreateControls() {
  const auto addButton = [this](const char* name, int left, int tabIndex) {
    const Ref<PushButton> button = Add<PushButton>(name, {left, 203, 80, 20});
    button->SetCaption(name);
    button->SetTabIndex(tabIndex);
    button->Action = [this](PushButton& pressed) {
      fBtnName = pressed.Caption();
      Hide();
    };
  };
  addButton("Btn2", 380, 0);
  const Ref<Label> text = Add<Label>("MessageText", {20, 14, 532, 177});
  text->SetMultiline(true);
  text->SetText("Label:");
  text->SetTabIndex(1);
  addButton("Btn3", 472, 2);
  addButton("Btn1", 288, 4);
}

Ref<MessageModal> ImplicitMessageModal() {
  Ref<MessageModal>& instance = Implicit();
  if (instance.IsNil()) {
    instance = MakeWindow<MessageModal>();
  }
  return instance;
}

void CloseImplicitMessageModal() {
  Implicit() = nullptr;
}

}  // namespace zephin
