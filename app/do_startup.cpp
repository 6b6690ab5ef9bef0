#include "app/zephin_stub_window.h"
#include "dialogs/pixel_strings.h"
#include "platform/framework/application.h"
#include "util/process.h"

namespace zephin {
namespace {

/// What a copy of a split setup would do when it starts; see DoStartup.
void RunRelocated(ZephinStubWindow& window) {
  window.Hide();
  ViewConst::MyProcessToTop();
  String choice;
  String options;
  if (window.SelectChoiceAndOptions(choice, options)) {
    window.ExpandFolder();
    window.ExpandChoiceAndOptions(choice, options);
    Quit(0);
  }
}

/// The publisher's words on the buttons, the title and the two texts.
void SetTexts(ZephinStubWindow& window) {
  const auto setCaption = [&window](const Ref<PushButton>& button, const String& custom) {
    button->SetCaption(window.CustomLabel(button->Caption(), custom));
  };
  window.SetTitle(window.CustomLabel(window.Title(), window.fWindowTitle));
  if (!window.fInfo.IsEmpty()) {
    setCaption(window.InfoBtn(), window.fLabels(6));
  }
  setCaption(window.QuitBtn(), window.fLabels(1));
  setCaption(window.InstallBtn(), window.fLabels(2));
  if (!window.fCopyright.IsEmpty()) {
    window.CopyrightLabel()->SetText(window.fCopyright);
    window.CopyrightLabel()->SetVisible(true);
  }
  window.MessageLabel()->SetText(window.fMessage);
  if (window.fCenterMessage) {
    window.MessageLabel()->SetAlignment(TextAlign::Center);
  }
}

/// Makes a picture whose white shows what lies behind, and shows it on the canvas.
void ShowOnCanvas(const Ref<Canvas>& canvas, const Ref<Picture>& picture) {
  picture->SetTransparent(1);
  canvas->SetBackdrop(picture);
  canvas->SetVisible(true);
}

void SetPictures(ZephinStubWindow& window) {
  using ViewConst::PixelStringToPicture;
  if (!window.fPicturePixelStr.IsEmpty()) {
    ShowOnCanvas(
        window.PictureCanvas(),
        PixelStringToPicture(window.fPictureWidth, window.fPictureHeight, window.fPicturePixelStr));
  }
  if (!window.fLogoPixelStr.IsEmpty()) {
    ShowOnCanvas(window.LogoCanvas(),
                 PixelStringToPicture(window.fLogoWidth, window.fLogoHeight, window.fLogoPixelStr));
  }
  if (!window.fBackgroundPixelStr.IsEmpty()) {
    window.SetBackdrop(PixelStringToPicture(window.fBackgroundWidth, window.fBackgroundHeight,
                                            window.fBackgroundPixelStr));
  }
}

void SetLinkAndInfo(ZephinStubWindow& window) {
  if (!window.fURLActual.IsEmpty() || !window.fURLDisplayed.IsEmpty()) {
    if (window.fURLDisplayed.IsEmpty()) {
      window.fURLDisplayed = window.fURLActual;
    }
    window.URLLabel()->SetText(window.fURLDisplayed);
    window.URLLabel()->SetVisible(true);
  }
  if (!window.fInfo.IsEmpty()) {
    window.InfoBtn()->SetVisible(true);
    window.Refresh(true);
  }
}

}  // namespace

void ZephinStubWindow::Event_Open() {
  if (RunningRelocatedInstaller()) {
    Hide();
    MsgBox("Drag the installer out of the Downloads folder before running it.");
    Quit(0);
  }
  DoStartup();
}

void ZephinStubWindow::DoStartup() {
  ViewConst::MyProcessToTop();
  if (!CheckAdminAccount()) {
    Quit(0);
  }
  if (!ReadData()) {
    // With no record read the captions are still empty, and this look-up raises before the message
    // is shown: the run ends in the report of that failure.
    MsgBox(CustomLabel("Installation Failed", fLabels(13)));
    Quit(0);
  }
  if (!CheckMinOSorRAM()) {
    Quit(0);
  }
  // Not reached as things are: Event_Open has asked the same and ended the run.
  if (RunningRelocatedInstaller()) {
    RunRelocated(*this);
    return;
  }
  if (!DoExecuteBefore()) {
    Quit(0);
  }
  SetTexts(*this);
  SetPictures(*this);
  SetLinkAndInfo(*this);
}

}  // namespace zephin
