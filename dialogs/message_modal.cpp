#include "dialogs/message_modal.h"

#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/texts.h"

namespace zephin {
namespace {

constexpr int kCentreOfMainScreen = 4;

/// One window serves all errors of a run. It must go before the application does, so it is not a
/// plain static object: see CloseImplicitMessageModal.
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
    // Each caller renames the buttons and compares the answer with its own words.
    button->Action = [this](PushButton& pressed) { Answer(pressed.Caption()); };
  };
  // Created in tab order: the "Yes" button comes first.
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

namespace zephin::ViewConst {
namespace {

/// How much a size class adds to the window's design size, in points.
struct SizeChange {
  int height;
  int width;
};

/// For a text of one short line.
constexpr SizeChange kTiny{-150, -250};

SizeChange ClassOfLongerText(std::int64_t length) {
  if (length < 200) {
    return {-50, -60};
  }
  // Long texts are wrapped, so they need height, not width.
  if (length > 600) {
    return {200, 0};
  }
  return {length > 400 ? 100 : 0, 0};
}

void Resize(MessageModal& dialog, const SizeChange& change) {
  dialog.SetHeight(dialog.Height() + change.height);
  dialog.SetWidth(dialog.Width() + change.width);
  const Ref<Label> text = dialog.MessageText();
  text->SetHeight(text->Height() + change.height);
  text->SetWidth(text->Width() + change.width);
  // Moved by hand: edges are locked for the user's resizing only.
  for (const Ref<PushButton>& button : {dialog.Btn1(), dialog.Btn2(), dialog.Btn3()}) {
    button->SetTop(button->Top() + change.height);
    button->SetLeft(button->Left() + change.width);
  }
}

}  // namespace

void MessageModalStartSize(MessageModal& dialog, const String& text) {
  const std::int64_t length = Len(text);
  const bool tiny = length < 40 && Pos(gLineBreak, text) == 0;
  Resize(dialog, tiny ? kTiny : ClassOfLongerText(length));
  const Ref<PushButton> btn1 = dialog.Btn1();
  const Ref<PushButton> btn2 = dialog.Btn2();
  const Ref<PushButton> btn3 = dialog.Btn3();
  // The visible buttons move up to the right edge.
  if (!btn3->Visible()) {
    btn2->SetLeft(btn3->Left());
    btn1->SetLeft(btn2->Left());
  }
  if (!btn2->Visible()) {
    btn1->SetLeft(btn2->Left());
  }
}

void MessageModalEndSize(MessageModal& dialog, const String& text) {
  const std::int64_t length = Len(text);
  // No look for a line break here, unlike at the start; the window isn't used again.
  const SizeChange change = length < 40 ? kTiny : ClassOfLongerText(length);
  Resize(dialog, {-change.height, -change.width});
  dialog.Btn1()->SetLeft(288);
  dialog.Btn2()->SetLeft(380);
  dialog.Btn3()->SetLeft(472);
}

}  // namespace zephin::ViewConst
