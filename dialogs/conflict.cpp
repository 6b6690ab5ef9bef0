#include "dialogs/conflict.h"

#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/text_building.h"
#include "util/text_search.h"

namespace zephin::GlobalsVk {

std::int64_t gConflictType = 0;
String gErrorString;

namespace {

/// The text of the code, or the pending one; the unknown error's if there is no such code.
String TextOfCode(std::int64_t code) {
  if (code == kConflictTextGiven) {
    return gErrorString;
  }
  const String text = MyGetString(code);
  return text.IsEmpty() ? MyGetString(kUnknownMessage) : text;
}

}  // namespace

String MyGetString(std::int64_t code) {
  const auto lines = [](const char* head, const char* detail) {
    return head + ViewConst::gLineBreak + ViewConst::gLineBreak + detail;
  };
  switch (code) {
    case kUnknownMessage:
      return "UNKNOWN ERROR. ";
    case kVolumeMessage:
      return lines("VOLUME NOT FOUND.", "This volume does not exist: ");
    case kFileExistsMessage:
      return lines("FILE ALREADY EXISTS.", "A file already exists at this path: ");
    case kPictureMemoryMessage:
      return lines("INSUFFICIENT RAM.", "Unable to process picture due to RAM shortage.");
    default:
      return "";
  }
}

bool YesNoDlg(const String& text) {
  gErrorString = text;
  gConflictType = kConflictTextGiven;
  const bool yes = ViewConst::YesNoDialog(kConflictTextGiven);
  gConflictType = 0;
  return yes;
}

void PoseConflictDialog() {
  if (gConflictType == 0) {
    return;
  }
  const Ref<MessageModal> dialog = ImplicitMessageModal();
  dialog->MessageText()->SetText(TextOfCode(gConflictType));
  dialog->fIsInfoDialog = false;
  dialog->Btn1()->SetVisible(false);
  dialog->Btn2()->SetVisible(false);
  dialog->Btn3()->SetCaption("OK");
  dialog->Btn3()->SetDefault(true);
  dialog->Btn3()->SetVisible(true);
  ViewConst::DoShowModal(*dialog);
  gConflictType = 0;
}

}  // namespace zephin::GlobalsVk

namespace zephin::ViewConst {
namespace {

/// How much a size class adds to the window's design size, in points.
struct SizeChange {
  int height;
  int width;
};

constexpr SizeChange kTiny{-150, -250};

SizeChange ClassOfLongerText(std::int64_t length) {
  if (length < 200) {
    return {-50, -60};
  }
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

bool YesNoDialog(std::int64_t code) {
  String text = code == GlobalsVk::kConflictTextGiven ? GlobalsVk::gErrorString
                                                      : GlobalsVk::MyGetString(code);
  if (text.IsEmpty()) {
    text = GlobalsVk::MyGetString(GlobalsVk::kUnknownMessage);
  }
  const Ref<MessageModal> dialog = MakeWindow<MessageModal>();
  dialog->SetTitle("Confirmation");
  dialog->MessageText()->SetText(LineEndingEncoding(text));
  dialog->Btn1()->SetVisible(false);
  dialog->Btn2()->SetCaption("Yes");
  dialog->Btn2()->SetDefault(true);
  dialog->Btn2()->SetVisible(true);
  dialog->Btn3()->SetCaption("No");
  dialog->Btn3()->SetDefault(false);
  dialog->Btn3()->SetCancel(true);
  dialog->Btn3()->SetVisible(true);
  MessageModalStartSize(*dialog, text);
  ModalScriptShow(*dialog);
  MessageModalEndSize(*dialog, text);
  return TextEquals(dialog->fBtnName, "Yes");
}

void ModalScriptShow(Window& window) {
  window.ShowModal();
}

void DoShowModal(Window& window) {
  if (gPresentTopLeft) {
    window.SetPosition(5, 40);
  }
  window.ShowModal();
}

}  // namespace zephin::ViewConst
