#include <algorithm>

#include "app/zephin_stub_window.h"
#include "dialogs/conflict.h"
#include "files/files.h"
#include "platform/framework/application.h"
#include "platform/framework/session.h"
#include "platform/framework/shell.h"
#include "platform/framework/streams.h"
#include "platform/framework/text.h"
#include "setup/bundle_files.h"
#include "util/paths.h"
#include "util/texts.h"

// A payload too large for one disc is cut into pieces: Data#1 in the bundle, then Data#2, Data#3,
// ... and last Data#End in the folder from which the user started the bundle, on any number of
// discs of one name. They are joined with nothing between them.

namespace zephin {
namespace {

using GlobalsVk::MyGetFolderItem;
using ViewConst::FileExists;

/// Passes a piece to `take` block by block. Raises NilObjectException if it can't be opened; a
/// piece that can't be read to its end is cut short silently.
template <class Take>
void ReadPiece(const Ref<FolderItem>& item, Take take) {
  constexpr std::int64_t kBlock = 1 << 20;
  const Ref<BinaryStream> stream = BinaryStream::Open(item, false);
  for (std::int64_t left = stream->Length(); left > 0;) {
    const String block = stream->Read(std::min(left, kBlock));
    if (block.IsEmpty()) {
      return;
    }
    take(block);
    left -= LenB(block);
    RuntimeBackgroundTask();
  }
}

/// Replaces whatever exists at the path by an empty file. Nil if that fails.
Ref<BinaryStream> CreateAnew(const String& zipPath) {
  const Ref<FolderItem> item = MyGetFolderItem(zipPath);
  if (item->Exists()) {
    item->Delete();
  }
  return item->CreateBinaryFile("");
}

/// Path of the piece with that number or, where it is missing, of the last one; empty where both
/// are missing. So a number that no disc holds makes the payload short, without a question.
String NextPiece(const String& folder, std::int64_t index) {
  String path = folder + kPieceStem + Str(index);
  if (!FileExists(path)) {
    path = folder + kLastPieceFile;
  }
  return FileExists(path) ? path : "";
}

/// Returns when the user says that the next disc is in the drive; ends the run if the user refuses.
void AskForNextDisc(const ZephinStubWindow& w) {
  if (!GlobalsVk::YesNoDlg(w.Wording(Caption::NextDisc))) {
    Quit(0);
  }
}

/// Passes all pieces to `take`, block by block in their order, and ejects the disc after each.
template <class Take>
void ReadAllPieces(ZephinStubWindow& w, const String& folder, const String& firstPartPath,
                   Take take) {
  const auto readAndEject = [&](const String& path) {
    ReadPiece(MyGetFolderItem(path), take);
    if (w.SourceFolderIsCD(folder)) {
      w.EjectCD();
    }
  };
  readAndEject(firstPartPath);
  String path;
  for (std::int64_t index = 2; !(path == folder + kLastPieceFile);) {
    path = NextPiece(folder, index);
    if (path.IsEmpty()) {
      AskForNextDisc(w);
    } else {
      readAndEject(path);
      ++index;
    }
    RuntimeBackgroundTask();
  }
}

}  // namespace

void ZephinStubWindow::CombineSplitSetup(const String& firstPartPath, const String& zipPath) {
  Application& app = Application::Current();
  app.SetMouseCursor(MouseCursor::Wait);
  const String folder = Clipboard().Text();
  const Ref<BinaryStream> output = CreateAnew(zipPath);
  if (!output.IsNil()) {
    ReadAllPieces(*this, folder, firstPartPath,
                  [&output](const String& block) { output->Write(block); });
    output->Close();
  }
  app.SetMouseCursor(MouseCursor::Arrow);
}

void ZephinStubWindow::CombineSplitSetupX(const String& firstPartPath, const String& zipPath) {
  Application& app = Application::Current();
  app.SetMouseCursor(MouseCursor::Wait);
  const String folder = Clipboard().Text();
  String whole("", Encoding::None);
  ReadAllPieces(*this, folder, firstPartPath, [&whole](const String& block) { whole += block; });
  const Ref<BinaryStream> output = CreateAnew(zipPath);
  if (!output.IsNil()) {
    output->Write(whole);
    output->Close();
  }
  app.SetMouseCursor(MouseCursor::Arrow);
}

bool ZephinStubWindow::SourceFolderIsCD(const String& folder) const {
  const String applications = ViewConst::GetApplicationFolderPath();
  const std::int64_t position = ViewConst::Pos(ViewConst::GetPathSeparator(), applications);
  const String volume = position == 0 ? "" : zephin::Left(applications, position - 1);
  // Paths begin with the separator, so the volume is empty and is never found: every folder counts
  // as a disc. That suits split setups, and without a tray the eject does nothing.
  return ViewConst::Pos(volume, folder) != 1;
}

void ZephinStubWindow::EjectCD() {
  Shell shell;
  shell.Execute("/usr/bin/drutil tray eject -drive internal");
}

}  // namespace zephin
