#include "dialogs/pages.h"

namespace zephin {
namespace {

constexpr Locks kAllEdges{true, true, true, true};
constexpr Locks kBottomRight{false, false, true, true};
constexpr int kDefaultPlace = 1;

/// Gives a page's button its caption and place in the tab order, and lets it end the page.
template <class Page>
void SetUpButton(Page& page, const Ref<PushButton>& button, const char* caption, int tabIndex) {
  button->SetCaption(caption);
  button->SetTabIndex(tabIndex);
  button->SetLockedEdges(kBottomRight);
  button->Action = [&page](PushButton& pressed) {
    page.fBtnName = Utf8(pressed.Name());
    page.Hide();
  };
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
  SetUpButton(*this, accept, "Continue", 1);
  accept->SetDefault(true);
  const Ref<PushButton> quit = Add<PushButton>("QuitBtn", {530, 472, 100, 22});
  SetUpButton(*this, quit, "Quit", 2);
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
  SetUpButton(*this, Add<PushButton>("QuitBtn", {498, 370, 80, 20}), "Quit", 2);
  const Ref<PushButton> accept = Add<PushButton>("OKBtn", {590, 370, 80, 20});
  SetUpButton(*this, accept, "I Agree", 3);
  accept->SetDefault(true);
}

}  // namespace zephin
