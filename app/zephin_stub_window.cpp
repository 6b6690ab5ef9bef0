#include "app/zephin_stub_window.h"

#include "platform/framework/application.h"
#include "util/texts.h"

namespace zephin {
namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kLinkBlue = 0x0000FF;

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
  const auto addButton = [this](const char* name, int left, const char* caption, int tabIndex,
                                void (ZephinStubWindow::*act)(PushButton&)) {
    Ref<PushButton> button = Add<PushButton>(name, {left, 198, 80, 20});
    button->SetCaption(caption);
    button->SetTabIndex(tabIndex);
    button->Action = [this, act](PushButton& pressed) { (this->*act)(pressed); };
    return button;
  };
  const auto addLabel = [this](const char* name, const Bounds& place, const char* text) {
    Ref<Label> label = Add<Label>(name, place);
    label->SetText(text);
    label->SetVisible(false);
    return label;
  };

  addButton("QuitBtn", 204, "Quit", 1, &ZephinStubWindow::QuitBtn_Action);
  addButton("InstallBtn", 296, "Install", 2, &ZephinStubWindow::InstallBtn_Action)
      ->SetDefault(true);
  Add<Label>("MessageLabel", {96, 14, 204, 77})->SetMultiline(true);
  Add<ProgressBar>("ProgressBar1", {37, 198, 155, 20})->SetVisible(false);
  const Ref<Label> url = addLabel("URLLabel", {20, 104, 356, 20}, "URL");
  url->SetAlignment(TextAlign::Center);
  url->SetTextColor(kLinkBlue);
  url->SetUnderline(true);
  url->MouseDown = [this](Label& label, int x, int y) { return URLLabel_MouseDown(label, x, y); };
  Add<Canvas>("PictureCanvas", {20, 12, 64, 64})->SetVisible(false);
  Add<Canvas>("LogoCanvas", {312, 12, 64, 64})->SetVisible(false);
  addLabel("CopyrightLabel", {20, 226, 356, 12}, "")->SetFontSize(9);
  // It covers a part of the bar, so an install hides it first.
  addButton("InfoBtn", 20, "Info", 11, &ZephinStubWindow::InfoBtn_Action)->SetVisible(false);
}

bool ZephinStubWindow::Event_CancelClose(bool /*appQuitting*/) {
  // Never refused, so that the Quit menu item always ends the run.
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
    // Publishers leave the scheme out; "http" anywhere in the address counts as one.
    ShowURL(ViewConst::Pos("http", fURLActual) == 0 ? "http://" + fURLActual : fURLActual);
  }
  return false;
}

String ZephinStubWindow::CustomLabel(const String& builtIn, const String& custom) const {
  return custom.IsEmpty() ? builtIn : custom;
}

}  // namespace zephin
