#include "dialogs/pages.h"

namespace zephin {
namespace {

constexpr Locks kAllEdges{true, true, true, true};
constexpr Locks kBottomRight{false, false, true, true};
constexpr int kDefaultPlace = 1;

void SetUpButton(const Ref<PushButton>& button, const char* caption, int tabIndex) {
  button->SetCaption(caption);
  button->SetTabIndex(tabIndex);
  button->SetLockedEdges(kBottomRight);
}

}  // namespace

void THtmlMessageDlg::Layout() {
  SetWidth(762);
  SetHeight(511);
  SetResizeable(true);
  SetMinimumSize(64, 64);
  SetDefaultLocation(kDefaultPlace);
}

void THtmlMessageDlg::CreateControls() {
  const Ref<HTMLViewer> view = Add<HTMLViewer>("MyHTMLViewer", {0, 0, 762, 460});
  view->SetTabIndex(0);
  view->SetLockedEdges(kAllEdges);
  const Ref<PushButton> accept = Add<PushButton>("ContinueBtn", {642, 472, 100, 22});
  SetUpButton(accept, "Continue", 1);
  AnswerWithName(*accept);
  accept->SetDefault(true);
  const Ref<PushButton> quit = Add<PushButton>("QuitBtn", {530, 472, 100, 22});
  SetUpButton(quit, "Quit", 2);
  AnswerWithName(*quit);
  quit->SetCancel(true);
}

void LicenseAgreementWindow::Layout() {
  SetTitle("License Agreement");
  SetWidth(690);
  SetHeight(410);
  SetResizeable(true);
  SetMinimumSize(690, 410);
}

void LicenseAgreementWindow::CreateControls() {
  const Ref<TextArea> text = Add<TextArea>("AgreementEdit", {20, 14, 650, 344});
  text->SetReadOnly(true);
  text->SetTabIndex(1);
  text->SetLockedEdges(kAllEdges);
  const Ref<PushButton> quit = Add<PushButton>("QuitBtn", {498, 370, 80, 20});
  SetUpButton(quit, "Quit", 2);
  AnswerWithName(*quit);
  const Ref<PushButton> accept = Add<PushButton>("OKBtn", {590, 370, 80, 20});
  SetUpButton(accept, "I Agree", 3);
  AnswerWithName(*accept);
  accept->SetDefault(true);
}

}  // namespace zephin
