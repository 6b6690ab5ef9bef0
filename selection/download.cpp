#include <memory>

#include "app/zephin_stub_window.h"
#include "files/access_rights.h"
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

/// The body of the response; shorter than it should be, or empty, after any failure.
String Fetch(const String& url) {
  constexpr int kSilenceSeconds = 20;
  const bool secure = Len(url) > 5 && TextEquals(Left(url, 5), "https");
  const std::unique_ptr<HTTPSocket> socket =
      secure ? std::make_unique<HTTPSecureSocket>() : std::make_unique<HTTPSocket>();
  return socket->Get(url, kSilenceSeconds);
}

/// False if there is no place to write to; a write that fails shows in the expansion.
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

}  // namespace

bool ZephinStubWindow::DownloadURL(const String& url, const String& fileName,
                                   const String& targetPath, bool renameFlag) {
  String localPath;
  String stemPath;
  {
    const String body = Fetch(url);
    if (LenB(body) < kSmallestDownload) {
      MsgBox("Setup file download failed.");
      return false;
    }
    localPath = ViewConst::MyExtractFilePath(targetPath) + ViewConst::GetPathSeparator() + fileName;
    stemPath = ViewConst::ChangeFileExt(localPath, "");
    if (!Store(body, localPath)) {
      MsgBox("Install of download failed.  Check account permissions.");
      return false;
    }
  }
  const bool result = ViewConst::ZipFileToFolder(localPath, targetPath, false);
  if (renameFlag) {
    GetFolderItem(stemPath)->SetName(ViewConst::ExtractFileName(targetPath));
  }
  ViewConst::DeleteFile(localPath);
  return result;
}

}  // namespace zephin
