#include "app/zephin_stub_window.h"
#include "dialogs/pages.h"
#include "payload/zip_file.h"
#include "platform/bundle/bundle_location.h"
#include "platform/framework/application.h"
#include "platform/framework/text.h"
#include "selection/placement.h"
#include "setup/lists.h"
#include "util/paths.h"
#include "util/process.h"
#include "util/texts.h"

namespace zephin {
namespace {

using ViewConst::ExtractFileName;
using ViewConst::MyAbsolutePath;

/// Path of the bundle's Resources folder with a trailing separator; empty if the executable is
/// unknown. Outside a bundle it is a path below the executable: no archive exists there, and the
/// user learns of each that is missing.
String ResourcesPath() {
  const Ref<FolderItem> contents = ViewConst::ContentsFolder();
  const Ref<FolderItem> item =
      contents.IsNil() ? Application::Current().ExecutableFile() : contents;
  return item.IsNil() ? "" : MyAbsolutePath(item->Child("Resources"));
}

/// Sets the message line and repaints it at once: the work that follows blocks.
void ShowLine(ZephinStubWindow& w, const String& text) {
  w.MessageLabel()->SetText(text);
  w.Refresh(true);
}

void ShowPleaseWait(ZephinStubWindow& w) {
  ShowLine(w, w.Wording(Caption::PleaseWait));
}

void PlaceChoice(ZephinStubWindow& w, const String& choice, const String& resourcesPath) {
  Placement placement;
  String archivePath;
  // No stop at the first match, on purpose: of equal captions the last one is installed.
  for (const SelectionEntry& entry : ReadSelectionList(w.fInstallChoices)) {
    if (TextEquals(entry.caption, choice)) {
      archivePath = resourcesPath + ExtractFileName(entry.source);
      placement = PlaceOf(w.fTargetFolder, entry.folder, "_Choice");
    }
  }
  if (ViewConst::ZipFileToFolder(archivePath, placement.extractFolder, true)) {
    Merge(placement);
  } else {
    MsgBox("Install failed for selected choice");
  }
}

bool FetchOption(ZephinStubWindow& w, const SelectionEntry& entry, const Placement& placement) {
  ShowLine(w, w.Wording(Caption::Downloading) + " " + entry.caption);
  const bool willBeMerged = !placement.mergeFolder.IsEmpty();
  const bool ok = w.DownloadURL(entry.source, ExtractFileName(entry.source),
                                placement.extractFolder, willBeMerged);
  ShowPleaseWait(w);
  return ok;
}

void PlaceOption(ZephinStubWindow& w, const SelectionEntry& entry, const String& resourcesPath) {
  // Anywhere else in the source "http" is part of a path.
  const bool isAddress = ViewConst::Pos(kAddressBeginning, entry.source) == 1;
  const Placement placement = PlaceOf(w.fTargetFolder, entry.folder, "_Option");
  const bool ok = isAddress
                      ? FetchOption(w, entry, placement)
                      : ViewConst::ZipFileToFolder(resourcesPath + ExtractFileName(entry.source),
                                                   placement.extractFolder, true);
  if (ok) {
    Merge(placement);
  } else {
    MsgBox("Install failed for option " + entry.caption);
  }
}

void ShowReleaseNotes(const ZephinStubWindow& w) {
  if (w.fPostInstallNotes.IsEmpty()) {
    return;
  }
  const String accept = w.Wording(Caption::Ok);
  ShowPage({.text = w.fPostInstallNotes,
            .title = w.Wording(Caption::ReleaseNotesTitle),
            .quitButton = QuitButton::Hidden,
            .acceptCaptionInHtml = accept,
            .acceptCaptionInPlain = accept});
}

}  // namespace

void ZephinStubWindow::ExpandChoiceAndOptions(const String& choice, const String& options) {
  if (fTargetFolder.IsEmpty()) {
    // The user has chosen no folder, so nothing was installed.
    return;
  }
  const String resourcesPath = ResourcesPath();
  if (!choice.IsEmpty() || !options.IsEmpty()) {
    ViewConst::MyProcessToTop();
    ShowPleaseWait(*this);
  }
  if (!choice.IsEmpty()) {
    PlaceChoice(*this, choice, resourcesPath);
  }
  if (!options.IsEmpty()) {
    for (const SelectionEntry& entry : ReadSelectionList(fInstallOptions)) {
      if (ViewConst::FindField(options, ",", entry.caption) != 0) {
        PlaceOption(*this, entry, resourcesPath);
      }
    }
  }
  ShowReleaseNotes(*this);
  if (!fCompletionURL.IsEmpty()) {
    ShowURL(fCompletionURL);
  }
}

}  // namespace zephin
