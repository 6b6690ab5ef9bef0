#include "app/zephin_stub_window.h"
#include "dialogs/pixel_strings.h"
#include "platform/framework/application.h"
#include "util/process.h"

namespace zephin {
namespace {

/// The publisher's words on the buttons, the title and the two texts.
void SetTexts(ZephinStubWindow& window) {
  const auto setCaption = [&window](const Ref<PushButton>& button, Caption caption) {
    button->SetCaption(window.CustomLabel(button->Caption(), window.Custom(caption)));
  };
  window.SetTitle(window.CustomLabel(window.Title(), window.fWindowTitle));
  if (!window.fInfo.IsEmpty()) {
    setCaption(window.InfoBtn(), Caption::Info);
  }
  setCaption(window.QuitBtn(), Caption::Quit);
  setCaption(window.InstallBtn(), Caption::Install);
  if (!window.fCopyright.IsEmpty()) {
    window.CopyrightLabel()->SetText(window.fCopyright);
    window.CopyrightLabel()->SetVisible(true);
  }
  window.MessageLabel()->SetText(window.fMessage);
  if (window.fCenterMessage) {
    window.MessageLabel()->SetAlignment(TextAlign::Center);
  }
}

/// Shows a picture on the canvas, its white transparent. Raises NilObjectException for nil: a
/// picture that can't be made ends the run after its message.
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
    // Shown at once, as pictures may have kept the user waiting.
    window.Refresh(true);
  }
}

/// What the copy of a split setup would do when it starts. Not reached: Event_Open asks the same
/// question first and ends the run. Without a pick the window would stay hidden.
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

}  // namespace

void ZephinStubWindow::Event_Open() {
  if (RunningRelocatedInstaller()) {
    // The system runs a quarantined download from there, where the bundle's neighbours are missing.
    Hide();
    MsgBox("Drag the installer out of the Downloads folder before running it.");
    Quit(0);
  }
  DoStartup();
}

void ZephinStubWindow::DoStartup() {
  ViewConst::MyProcessToTop();
  // Before the record is read: no setup may ask for less.
  if (!CheckAdminAccount()) {
    Quit(0);
  }
  if (!ReadData()) {
    // Without a record the list of captions is empty, so this look-up raises before the message is
    // shown, and the run ends with the report of that failure.
    MsgBox(Wording(Caption::Failed));
    Quit(0);
  }
  if (!CheckMinOSorRAM()) {
    Quit(0);
  }
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
