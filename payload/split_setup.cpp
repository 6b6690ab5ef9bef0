#include <algorithm>

#include "app/zephin_stub_window.h"
#include "dialogs/conflict.h"
#include "files/files.h"
#include "platform/framework/application.h"
#include "platform/framework/clipboard.h"
#include "platform/framework/shell.h"
#include "platform/framework/streams.h"
#include "platform/framework/text.h"
#include "setup/bundle_files.h"
#include "util/paths.h"
#include "util/text_search.h"

// A payload too large for one disc is cut into pieces: Data#1 in the bundle, then Data#2, Data#3,
// ... and last Data#End in the folder that the bundle was started from, on whichever disc holds
// them. They are joined with nothing between them.

namespace zephin {
namespace {

using GlobalsVk::MyGetFolderItem;
using ViewConst::FileExists;

/// Reads a piece block by block and hands each block on. A piece that can't be opened raises.
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

/// Creates the joined file anew. Nil if it can't be made.
Ref<BinaryStream> CreateAnew(const String& zipPath) {
  const Ref<FolderItem> item = MyGetFolderItem(zipPath);
  if (item->Exists()) {
    item->Delete();
  }
  return item->CreateBinaryFile("");
}

/// Hands all pieces on in their order, disc by disc, and gives the path of the last one. A no to
/// the question for the next disc ends the run.
template <class Take>
String ReadAllPieces(ZephinStubWindow& w, const String& folder, const String& firstPartPath,
                     Take take) {
  const auto eject = [&] {
    if (w.SourceFolderIsCD(folder)) {
      w.EjectCD();
    }
  };
  ReadPiece(MyGetFolderItem(firstPartPath), take);
  eject();
  String path;
  std::int64_t index = 1;
  bool done = false;
  while (!done) {
    ++index;
    path = folder + kPieceStem + Str(index);
    if (!FileExists(path)) {
      path = folder + kLastPieceFile;
      done = FileExists(path);
    }
    if (FileExists(path)) {
      const Ref<FolderItem> item = MyGetFolderItem(path);
      if (!item.IsNil()) {
        ReadPiece(item, take);
        eject();
      }
    } else if (GlobalsVk::YesNoDlg(w.Wording(Caption::NextDisc))) {
      --index;
    } else {
      Quit(0);
    }
    RuntimeBackgroundTask();
  }
  return path;
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
  const String lastPath = ReadAllPieces(*this, folder, firstPartPath,
                                        [&whole](const String& block) { whole += block; });
  if (TextEquals(ViewConst::ExtractFileName(lastPath), kLastPieceFile)) {
    const Ref<BinaryStream> output = CreateAnew(zipPath);
    if (!output.IsNil()) {
      output->Write(whole);
      output->Close();
    }
  }
  app.SetMouseCursor(MouseCursor::Arrow);
}

bool ZephinStubWindow::SourceFolderIsCD(const String& folder) const {
  const String applications = ViewConst::MyAbsolutePath(ViewConst::GetApplicationFolder());
  const std::int64_t position = ViewConst::Pos(ViewConst::GetPathSeparator(), applications);
  const String volume = position == 0 ? "" : zephin::Left(applications, position - 1);
  // Paths begin with the separator, so the volume is empty and nothing is found: every source is
  // taken for a disc, and where there is no tray the eject does nothing.
  return ViewConst::Pos(volume, folder) != 1;
}

void ZephinStubWindow::EjectCD() {
  Shell shell;
  shell.Execute("/usr/bin/drutil tray eject -drive internal");
}

}  // namespace zephin
