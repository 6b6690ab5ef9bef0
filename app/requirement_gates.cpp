#include <array>

#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "platform/framework/application.h"
#include "platform/framework/machine.h"
#include "platform/framework/streams.h"
#include "platform/framework/text.h"
#include "util/globals.h"
#include "util/paths.h"

namespace zephin {
namespace {

/// A publisher's keyword, what it asks for at least, and what a user who hasn't that is told.
struct Requirement {
  const char* keyword;
  std::int64_t least;
  const char* message;
};

/// By minor version; the major one plays no part.
constexpr std::array kSystems{
    Requirement{"MacOS10.7", 7, "Mac OS X 10.7 or later is required."},
    Requirement{"MacOS10.8", 8, "Mac OS X 10.8 or later is required."},
    Requirement{"MacOS10.9", 9, "Mac OS X 10.9 or later is required."},
    Requirement{"MacOS10.10", 10, "Mac OS X 10.10 or later is required."},
    Requirement{"MacOS10.11", 11, "Mac OS X 10.11 or later is required."},
    Requirement{"MacOS10.12", 12, "Mac OS X 10.12 or later is required."},
    Requirement{"MacOS10.13", 13, "Mac OS X 10.13 or later is required."},
};

/// In megabytes, 1000 to the gigabyte.
constexpr std::array kMemories{
    Requirement{"250MB", 250, "250 MB RAM is required."},
    Requirement{"500MB", 500, "500 MB RAM is required."},
    Requirement{"1GB", 1000, "1 GB RAM is required."},
    Requirement{"2GB", 2000, "2 GB RAM is required."},
    Requirement{"4GB", 4000, "4 GB RAM is required."},
    Requirement{"8GB", 8000, "8 GB RAM is required."},
    Requirement{"16GB", 16000, "16 GB RAM is required."},
    Requirement{"32GB", 32000, "32 GB RAM is required."},
};

template <class Table>
bool Meets(const Table& table, const String& keyword, std::int64_t value) {
  bool met = true;
  for (const Requirement& requirement : table) {
    if (TextEquals(keyword, requirement.keyword) && value < requirement.least) {
      MsgBox(requirement.message);
      met = false;
    }
  }
  return met;
}

/// Writes and deletes a file at that path. True if that could be done.
bool ProbeSucceeds(const String& path, const Ref<FolderItem>& item) {
  const Ref<BinaryStream> stream = item->CreateBinaryFile("");
  if (stream.IsNil()) {
    return false;
  }
  stream->Flush();
  stream->Close();
  if (!ViewConst::FileExists(path)) {
    return false;
  }
  ViewConst::DeleteFile(path);
  return true;
}

}  // namespace

bool ZephinStubWindow::CheckMinOSorRAM() {
  // A query that fails leaves its number at 0.
  std::int64_t memory = 0;
  std::int64_t major = 0;
  std::int64_t minor = 0;
  System::Gestalt("ramm", memory);
  if (System::Gestalt("sys1", major)) {
    System::Gestalt("sys2", minor);
  }
  const bool systemMeets = Meets(kSystems, fMinOS, minor);
  const bool memoryMeets = Meets(kMemories, fMinRAM, memory);
  return systemMeets && memoryMeets;
}

bool ZephinStubWindow::CheckAdminAccount() {
  const String path = ViewConst::MyAbsolutePath(ViewConst::GetApplicationFolder()) + "X.txt";
  const Ref<FolderItem> item = GlobalsVk::MyGetFolderItem(path);
  if (item.IsNil()) {
    return false;
  }
  if (ProbeSucceeds(path, item)) {
    return true;
  }
  MsgBox("Cannot Install" + ViewConst::gLineBreak + ViewConst::gLineBreak +
         "An Administrator account is required to run this installer.");
  return false;
}

}  // namespace zephin
