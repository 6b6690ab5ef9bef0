#include "app/zephin_stub_window.h"

#include "platform/framework/application.h"
#include "util/text_search.h"

namespace zephin {
namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kLinkBlue = 0x0000FF;

Ref<PushButton> SetUp(const Ref<PushButton>& button, const char* caption, int tabIndex) {
  button->SetCaption(caption);
  button->SetTabIndex(tabIndex);
  return button;
}

}  // namespace

void ZephinStubWindow::Layout() {
  SetMenuBar(Application::Current().Menus());
  SetMenuBarVisible(false);
  SetTitle("Install");
  SetWidth(396);
  SetHeight(238);
  SetMinimumSize(64, 64);
  SetMaximumSize(32000, 32000);
  SetType(WindowType::MovableModal);
  SetResizeable(false);
  SetClosesAsQuit(true);
  SetBackgroundColor(kWhite);
  SetVisible(true);
}

void ZephinStubWindow::CreateControls() {
  _CreateControls0();
}

void ZephinStubWindow::_CreateControls0() {
  const Ref<PushButton> quit = SetUp(Add<PushButton>("QuitBtn", {204, 198, 80, 20}), "Quit", 1);
  quit->Action = [this](PushButton& button) { QuitBtn_Action(button); };

  const Ref<PushButton> install =
      SetUp(Add<PushButton>("InstallBtn", {296, 198, 80, 20}), "Install", 2);
  install->SetDefault(true);
  install->Action = [this](PushButton& button) { InstallBtn_Action(button); };

  Add<Label>("MessageLabel", {96, 14, 204, 77})->SetMultiline(true);
  // It lies over InfoBtn, which is why the install hides that button first.
  Add<ProgressBar>("ProgressBar1", {37, 198, 155, 20})->SetVisible(false);

  const Ref<Label> url = Add<Label>("URLLabel", {20, 104, 356, 20});
  url->SetText("URL");
  url->SetAlignment(TextAlign::Center);
  url->SetTextColor(kLinkBlue);
  url->SetUnderline(true);
  url->SetVisible(false);
  url->MouseDown = [this](Label& label, int x, int y) { return URLLabel_MouseDown(label, x, y); };

  Add<Canvas>("PictureCanvas", {20, 12, 64, 64})->SetVisible(false);
  Add<Canvas>("LogoCanvas", {312, 12, 64, 64})->SetVisible(false);

  const Ref<Label> copyright = Add<Label>("CopyrightLabel", {20, 226, 356, 12});
  copyright->SetFontSize(9);
  copyright->SetVisible(false);

  const Ref<PushButton> info = SetUp(Add<PushButton>("InfoBtn", {20, 198, 80, 20}), "Info", 11);
  info->SetVisible(false);
  info->Action = [this](PushButton& button) { InfoBtn_Action(button); };
}

bool ZephinStubWindow::Event_CancelClose(bool /*appQuitting*/) {
  return false;
}

void ZephinStubWindow::QuitBtn_Action(PushButton& /*button*/) {
  Quit(0);
}

void ZephinStubWindow::InfoBtn_Action(PushButton& /*button*/) {
  InfoBtnClicked();
}

void ZephinStubWindow::InstallBtn_Action(PushButton& /*button*/) {
  OKBtnClicked();
  Quit(0);
}

bool ZephinStubWindow::URLLabel_MouseDown(Label& /*label*/, int /*x*/, int /*y*/) {
  if (!fURLActual.IsEmpty()) {
    ShowURL(ViewConst::Pos("http", fURLActual) == 0 ? "http://" + fURLActual : fURLActual);
  }
  return false;
}

String ZephinStubWindow::CustomLabel(const String& builtIn, const String& custom) const {
  return custom.IsEmpty() ? builtIn : custom;
}

}  // namespace zephin
