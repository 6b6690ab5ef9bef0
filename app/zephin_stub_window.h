#ifndef APP_ZEPHIN_STUB_WINDOW_H_
#define APP_ZEPHIN_STUB_WINDOW_H_

#include "platform/framework/controls.h"
#include "platform/framework/window.h"
#include "setup/captions.h"
#include "setup/record.h"

namespace zephin {

/// The main window, and the holder of all state of a run. The fields of the setup record are its
/// own, and each step of an install is a method of it. What doesn't need the window is a free
/// function. The methods are defined by subject:
///
///   app/zephin_stub_window.cpp   layout, controls and their handlers, wording
///   app/read_data.cpp            ReadData, ReadPlainOrHtmlText
///   app/do_startup.cpp           Event_Open, DoStartup
///   app/requirement_gates.cpp    CheckAdminAccount, CheckMinOSorRAM
///   app/install_flow.cpp         OKBtnClicked, InfoBtnClicked, ShowInstallinProgress
///   payload/                     ExpandFolder and the steps that it calls, SelectTargetFolder
///   actions/                     SpecialPath, copy lists, the before-program
///   selection/                   choices and options, from the pick to their place
///
/// The window's operations are virtual, in the order of the system's own list of them.
class ZephinStubWindow : public Window, public SetupRecord {
 protected:
  void Layout() override;
  void CreateControls() override;
  virtual void _CreateControls0();

 public:
  virtual Ref<PushButton> QuitBtn() const { return Named<PushButton>("QuitBtn"); }
  virtual Ref<PushButton> InstallBtn() const { return Named<PushButton>("InstallBtn"); }
  virtual Ref<Label> MessageLabel() const { return Named<Label>("MessageLabel"); }
  /// Shows how much of the time given to the expansion has passed.
  virtual Ref<ProgressBar> ProgressBar1() const { return Named<ProgressBar>("ProgressBar1"); }
  virtual Ref<Label> URLLabel() const { return Named<Label>("URLLabel"); }
  virtual Ref<Canvas> PictureCanvas() const { return Named<Canvas>("PictureCanvas"); }
  virtual Ref<Canvas> LogoCanvas() const { return Named<Canvas>("LogoCanvas"); }
  virtual Ref<Label> CopyrightLabel() const { return Named<Label>("CopyrightLabel"); }
  virtual Ref<PushButton> InfoBtn() const { return Named<PushButton>("InfoBtn"); }

  virtual void QuitBtn_Action(PushButton& button);
  virtual void InstallBtn_Action(PushButton& button);
  /// Opens the publisher's address. Always false: the window stays as it is.
  virtual bool URLLabel_MouseDown(Label& label, int x, int y);
  virtual void InfoBtn_Action(PushButton& button);
  void Event_Open() override;
  bool Event_CancelClose(bool appQuitting) override;

  /// Installs the payload in the bundle. Returns whether or not anything was installed;
  /// `fTargetFolder` is then empty if the user chose no folder.
  virtual void ExpandFolder();
  /// Fills the bar for the time that an archive of the item's length gets. The item must not be
  /// nil; the path is ignored.
  virtual void ZipFileProcess(const String& zipPath, const Ref<FolderItem>& zipItem);
  /// Reads the setup record into the fields. False if there is none; the fields stay as they were.
  [[nodiscard]] virtual bool ReadData();
  /// Runs the gates, reads the record, runs the before-program and configures the window, which is
  /// already shown. Ends the run if a gate, the record or the before-program calls it off.
  virtual void DoStartup();
  /// The install, from the first page to the end of the process; returns if the user refuses.
  virtual void OKBtnClicked();
  /// The publisher's wording if it isn't empty, else the program's.
  virtual String CustomLabel(const String& builtIn, const String& custom) const;
  /// The publisher's wording of a caption; empty to keep the built-in one. Raises
  /// OutOfBoundsException if the record's list of captions is too short.
  const String& Custom(Caption caption) const { return fLabels(IndexOf(caption)); }
  /// A caption in the publisher's wording, or else in the built-in one. Raises like Custom.
  String Wording(Caption caption) const {
    return CustomLabel(BuiltInWording(caption), Custom(caption));
  }
  /// Shows the publisher's page about the product.
  virtual void InfoBtnClicked();
  /// Asks for the folder to install into, opening at `defaultPath`. Its path without a trailing
  /// separator; empty if it can't be written (after a message) and for the root; on a cancel empty
  /// or `defaultPath`, as `emptyOnCancel` says.
  virtual String SelectTargetFolder(const String& defaultPath, bool emptyOnCancel);
  /// Runs the publisher's before-program, if there is one. False if it aborts the install.
  [[nodiscard]] virtual bool DoExecuteBefore();
  /// Joins the pieces of a split payload into `zipPath`, disc by disc. Ends the run if the user
  /// answers No to the request for the next disc.
  virtual void CombineSplitSetup(const String& firstPartPath, const String& zipPath);
  /// Starts a copy of a split setup's bundle in the temporary folder, so that its disc can be
  /// ejected. True if this process must stop, also when the copy couldn't be made.
  [[nodiscard]] virtual bool RelocateInstaller(const String& firstSplitPart);
  /// Whether the temporary folder's path occurs anywhere in the path of the bundle's folder. So it
  /// is true for such a copy, and for any bundle that a user starts from there.
  virtual bool RunningRelocatedInstaller() const;
  /// Opens the tray of the internal drive, if there is one.
  virtual void EjectCD();
  /// Always true, as paths here don't begin with the name of a volume. So after each piece of a
  /// split setup the tray is opened, where there is one.
  virtual bool SourceFolderIsCD(const String& folder) const;
  /// Whether the user can write to the Applications folder. Shows a message if not.
  [[nodiscard]] virtual bool CheckAdminAccount();
  /// Merges the expanded patch folder, `fTargetFolder`, into the installed one and deletes it.
  virtual void ApplyInstallationPatch();
  /// Merges one folder of the patch tree. `relativePath` is its path below the root of the tree,
  /// empty for the root; neither path has a trailing separator. The folder may be nil.
  virtual void ApplyPatchFolder(const Ref<FolderItem>& folder, const String& relativePath,
                                const String& installedPath);
  /// Starts `launchItem`, unless it is nil, and deletes the archive. Tries again every second, with
  /// no limit, until the archive is gone.
  virtual void ZipFileDelete(const String& zipPath, const Ref<FolderItem>& launchItem);
  /// Shows in the window that the install is in progress; painted when it returns.
  virtual void ShowInstallinProgress();
  /// A form of CombineSplitSetup that writes nothing until it has read every piece. Nothing calls
  /// it.
  virtual void CombineSplitSetupX(const String& firstPartPath, const String& zipPath);
  /// Lets the user pick. `choice` receives the caption of one choice, `options` the captions of the
  /// ticked options joined with ","; each is written only if its dialog is shown. False if the user
  /// pressed Quit in a dialog.
  [[nodiscard]] virtual bool SelectChoiceAndOptions(String& choice, String& options);
  /// Installs what was picked, shows the closing notes and opens the completion address. Does
  /// nothing if `fTargetFolder` is empty.
  virtual void ExpandChoiceAndOptions(const String& choice, const String& options);
  /// Whether the machine meets the publisher's requirements. Shows a message for each that it
  /// doesn't meet.
  [[nodiscard]] virtual bool CheckMinOSorRAM();
  /// Downloads an archive and expands it into `targetPath`. False if that failed; the user has then
  /// seen a message only if the download itself failed. `renameFlag`: the caller is going to merge
  /// `targetPath` into another folder.
  [[nodiscard]] virtual bool DownloadURL(const String& url, const String& fileName,
                                         const String& targetPath, bool renameFlag);
  /// A page of the record, in its stored form, as the text to show.
  virtual String ReadPlainOrHtmlText(const String& text) const;
  /// Carries out the copy list's commands for after the install.
  virtual void PostInstallCopy();
  /// Replaces the token that a path begins with, in place, and puts a path for the helper program
  /// on the clipboard. False, with nothing changed, if it begins with no token.
  [[nodiscard]] virtual bool SpecialPath(String& path);
  /// Waits for the before-program's answer on the clipboard. False if that aborts the install.
  [[nodiscard]] virtual bool CommunicateWithExecuteBefore();
  /// Carries out the copy list's commands for before the install.
  virtual void PreInstallCopy();
};

}  // namespace zephin

#endif  // APP_ZEPHIN_STUB_WINDOW_H_
