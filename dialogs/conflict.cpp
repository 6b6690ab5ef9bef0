#include "dialogs/conflict.h"

#include "dialogs/message_modal.h"
#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/texts.h"

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
  // The question travels in the globals, since YesNoDialog takes a code only.
  gErrorString = text;
  gConflictType = kConflictTextGiven;
  const bool yes = ViewConst::YesNoDialog(kConflictTextGiven);
  // Not pending any more: a later PoseConflictDialog must not show the question as an error.
  gConflictType = 0;
  return yes;
}

void PoseConflictDialog() {
  if (gConflictType == 0) {
    return;
  }
  // The shared window keeps what an earlier message has left, such as the buttons that it showed.
  const Ref<MessageModal> dialog = ImplicitMessageModal();
  dialog->MessageText()->SetText(TextOfCode(gConflictType));
  dialog->fIsInfoDialog = false;
  dialog->Btn1()->SetVisible(false);
  dialog->Btn2()->SetVisible(false);
  dialog->Btn3()->SetCaption("OK");
  dialog->Btn3()->SetDefault(true);
  dialog->Btn3()->SetVisible(true);
  // At the design size: MessageModalStartSize is for questions only.
  ViewConst::DoShowModal(*dialog);
  gConflictType = 0;
}

}  // namespace zephin::GlobalsVk

namespace zephin::ViewConst {

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
  // Has no visible effect, as the window is not shown again, but the sizes stay symmetrical.
  MessageModalEndSize(*dialog, text);
  return TextEquals(dialog->fBtnName, "Yes");
}

void ModalScriptShow(Window& window) {
  window.ShowModal();
}

void DoShowModal(Window& window) {
  if (gPresentTopLeft) {
    // Below the menu bar of the system that the installer was designed for.
    window.SetPosition(5, 40);
  }
  window.ShowModal();
}

}  // namespace zephin::ViewConst
