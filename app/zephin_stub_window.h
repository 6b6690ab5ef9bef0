#ifndef APP_ZEPHIN_STUB_WINDOW_H_
#define APP_ZEPHIN_STUB_WINDOW_H_

#include <cstdint>

#include "platform/framework/array.h"
#include "platform/framework/controls.h"
#include "platform/framework/window.h"

namespace zephin {

/// The main window, and the holder of all state of a run: the fields of the setup record live here,
/// and each subsystem's steps are methods of it, defined in that subsystem's folder (setup,
/// payload, selection, actions, platform, app). What doesn't need the window is a free function
/// there.
class ZephinStubWindow : public Window {
 public:
  // The setup record (see ReadData in setup/). Empty, 0 or false before it is read and where the
  // publisher gave nothing. A flag is true only for exactly "1".
  String fExecuteAfterName;  ///< Program to start after the install; rewritten by SpecialPath.
  String fAgreement;         ///< Page to be accepted before the install.
  bool fApplicationFolder = false;  ///< Install into the Applications folder, without a question.
  String fLogoPixelStr;             ///< Pixel string of the picture at the top right.
  String fMessage;                  ///< The main window's text.
  String fPicturePixelStr;          ///< Pixel string of the picture at the top left.
  String fURLActual;                ///< Target of the link.
  std::int64_t fLogoWidth = 0;      ///< Of a pixel string, in pixels, as all widths and heights.
  std::int64_t fLogoHeight = 0;
  std::int64_t fPictureWidth = 0;
  std::int64_t fPictureHeight = 0;
  String fURLDisplayed;           ///< Caption of the link.
  String fTimeStamp;              ///< Kept; nothing reads it.
  bool fPromptToReplace = false;  ///< Ask before an existing target folder is deleted.
  Array<String> fLabels;          ///< The publisher's wording, by index; an empty entry keeps ours.
  String fInfo;                   ///< Page behind the Info button.
  /// The bare name of the folder to install; its full path once the place is known (with "Patch"
  /// behind it in a patch), and empty when the user gave no place.
  String fTargetFolder;
  String fExecuteBeforeName;   ///< Program run first of all; rewritten by SpecialPath.
  String fBackgroundPixelStr;  ///< Pixel string of the window's backdrop.
  std::int64_t fBackgroundHeight = 0;
  std::int64_t fBackgroundWidth = 0;
  std::int64_t fEncryptionLen = 0;  ///< Kept; nothing reads it.
  String fCopyright;                ///< Line at the bottom of the window.
  String fWindowTitle;              ///< Title of the window.
  bool fCenterMessage = false;      ///< Centre the message.
  bool fInstallationPatch = false;  ///< The payload updates an installed folder.
  String fInstallChoices;           ///< List of choices, one of which is installed.
  String fInstallOptions;           ///< List of options, any of which are installed.
  String fMinOS;                    ///< Keyword of the oldest system.
  String fMinRAM;                   ///< Keyword of the least memory.
  String fCompletionURL;            ///< Address opened at the end.
  String fPreInstallNotes;          ///< Page shown first.
  String fPostInstallNotes;         ///< Page shown at the end.
  String fPostCopy;                 ///< Copy lists, for before and after the install.

 protected:
  void Layout() override;
  void CreateControls() override;
  virtual void _CreateControls0();

 public:
  virtual Ref<PushButton> QuitBtn() const { return Named<PushButton>("QuitBtn"); }
  virtual Ref<PushButton> InstallBtn() const { return Named<PushButton>("InstallBtn"); }
  virtual Ref<Label> MessageLabel() const { return Named<Label>("MessageLabel"); }
  /// The time that the expansion is given, as it runs.
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

  /// Turns the payload in the bundle into an installed folder; see payload/expand_folder.cpp.
  virtual void ExpandFolder();
  /// Fills the bar for the time that an archive of the item's size is given. The item must not be
  /// nil; the path isn't used.
  virtual void ZipFileProcess(const String& zipPath, const Ref<FolderItem>& zipItem);
  /// Reads the setup record into the fields. False if there is none; the fields stay as they were.
  [[nodiscard]] virtual bool ReadData();
  /// All between the window's making and its showing: the record, the gates, the before-program,
  /// texts and pictures. Ends the run if one of them says so.
  virtual void DoStartup();
  /// The install, from the first page to the end of the process; returns if the user refuses.
  virtual void OKBtnClicked();
  /// The publisher's wording if it isn't empty, else the program's.
  virtual String CustomLabel(const String& builtIn, const String& custom) const;
  /// Shows the publisher's page about the product.
  virtual void InfoBtnClicked();
  /// Asks for the folder to install into, opening at `defaultPath`. Its path without a trailing
  /// separator; empty if it can't be written (after a message) and for the root; on a cancel empty
  /// or `defaultPath`, as `emptyOnCancel` says.
  virtual String SelectTargetFolder(const String& defaultPath, bool emptyOnCancel);
  /// Runs the publisher's before-program. False ends the run.
  [[nodiscard]] virtual bool DoExecuteBefore();
  /// Joins the pieces of a split payload into `zipPath`, disc by disc; a no to the question for the
  /// next disc ends the run.
  virtual void CombineSplitSetup(const String& firstPartPath, const String& zipPath);
  /// Starts a copy of a split setup's bundle in the temporary folder, so that its disc can be taken
  /// out. True: the copy has taken over, or should have, and the caller does no more.
  [[nodiscard]] virtual bool RelocateInstaller(const String& firstSplitPart);
  /// Whether this process is such a copy.
  virtual bool RunningRelocatedInstaller() const;
  /// Opens the tray of the internal drive, if there is one.
  virtual void EjectCD();
  /// Whether the folder is on another volume than the applications folder.
  virtual bool SourceFolderIsCD(const String& folder) const;
  /// Whether the user may write to the Applications folder; tells the user if not.
  [[nodiscard]] virtual bool CheckAdminAccount();
  /// Merges the expanded patch folder, `fTargetFolder`, into the installed one and removes it.
  virtual void ApplyInstallationPatch();
  /// Merges one folder of the patch tree. `relativePath` is its path below the root of the tree,
  /// empty for the root; neither path has a trailing separator. The folder may be nil.
  virtual void ApplyPatchFolder(const Ref<FolderItem>& folder, const String& relativePath,
                                const String& installedPath);
  /// Starts the after-program, if there is one, and deletes the archive, however long that takes.
  virtual void ZipFileDelete(const String& zipPath, const Ref<FolderItem>& launchItem);
  /// Tells in the window that the install is going on, painted before it returns.
  virtual void ShowInstallinProgress();
  /// The form of CombineSplitSetup that writes nothing until every piece has been read. Unused.
  virtual void CombineSplitSetupX(const String& firstPartPath, const String& zipPath);
  /// Lets the user pick: `choice` becomes the caption of one choice, `options` the captions of the
  /// ticked options joined with ",". Each is written only if its dialog is shown. False if a dialog
  /// was left by its Quit button.
  [[nodiscard]] virtual bool SelectChoiceAndOptions(String& choice, String& options);
  /// Puts what was picked in its place, shows the closing notes and opens the completion address;
  /// does nothing if `fTargetFolder` is empty.
  virtual void ExpandChoiceAndOptions(const String& choice, const String& options);
  /// Whether the machine meets the publisher's requirements; tells the user of each that it
  /// doesn't.
  [[nodiscard]] virtual bool CheckMinOSorRAM();
  /// Fetches an archive and expands it into `targetPath`, after telling the user of a failure of
  /// the download itself. `renameFlag`: the caller will merge `targetPath` into another folder.
  [[nodiscard]] virtual bool DownloadURL(const String& url, const String& fileName,
                                         const String& targetPath, bool renameFlag);
  /// A page text of the record as the text to show.
  virtual String ReadPlainOrHtmlText(const String& text) const;
  /// Obeys the copy list's commands for after the install.
  virtual void PostInstallCopy();
  /// Resolves a path that begins with a token, in place, and leaves a path for the helper program
  /// on the clipboard. False, with nothing changed, if it begins with none.
  [[nodiscard]] virtual bool SpecialPath(String& path);
  /// Waits for the before-program's answer on the clipboard. False if it calls the install off.
  [[nodiscard]] virtual bool CommunicateWithExecuteBefore();
  /// Obeys the copy list's commands for before the install.
  virtual void PreInstallCopy();
};

}  // namespace zephin

#endif  // APP_ZEPHIN_STUB_WINDOW_H_
