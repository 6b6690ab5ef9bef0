#include <memory>

#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "payload/zip_file.h"
#include "platform/framework/application.h"
#include "platform/framework/http_socket.h"
#include "platform/framework/streams.h"
#include "platform/framework/text.h"
#include "setup/limits.h"
#include "util/paths.h"

namespace zephin {
namespace {

/// The body of the response; after a failure what has arrived of it, or nothing.
String Fetch(const String& url) {
  constexpr int kSilenceSeconds = 20;
  const bool secure = Len(url) > 5 && TextEquals(Left(url, 5), "https");
  const std::unique_ptr<HTTPSocket> socket =
      secure ? std::make_unique<HTTPSecureSocket>() : std::make_unique<HTTPSocket>();
  return socket->Get(url, kSilenceSeconds);
}

/// False if the file can't be created. Failed writes are ignored, as they make the expansion fail.
bool Store(const String& body, const String& localPath) {
  const Ref<FolderItem> item = GlobalsVk::MyGetFolderItem(localPath);
  const Ref<BinaryStream> stream = item.IsNil() ? nullptr : item->CreateBinaryFile("text");
  if (stream.IsNil()) {
    return false;
  }
  stream->Write(body);
  stream->Close();
  ViewConst::AllUsersFullAccess(localPath);
  return true;
}

/// False, after a message, if nothing was stored.
bool FetchAndStore(const String& url, const String& localPath) {
  const String body = Fetch(url);
  if (LenB(body) < kSmallestDownload) {
    MsgBox("Setup file download failed.");
    return false;
  }
  if (!Store(body, localPath)) {
    MsgBox("Install of download failed.  Check account permissions.");
    return false;
  }
  return true;
}

}  // namespace

bool ZephinStubWindow::DownloadURL(const String& url, const String& fileName,
                                   const String& targetPath, bool renameFlag) {
  const String localPath =
      ViewConst::MyExtractFilePath(targetPath) + ViewConst::GetPathSeparator() + fileName;
  if (!FetchAndStore(url, localPath)) {
    return false;
  }
  const bool result = ViewConst::ZipFileToFolder(localPath, targetPath, false);
  if (renameFlag) {
    // For a content that was expanded beside the archive, under its name. The expansion has created
    // the target folder, so its name is taken, and no item of the user's is renamed.
    const String stemPath = ViewConst::ChangeFileExt(localPath, "");
    GetFolderItem(stemPath)->SetName(ViewConst::ExtractFileName(targetPath));
  }
  ViewConst::DeleteFile(localPath);
  return result;
}

}  // namespace zephin
