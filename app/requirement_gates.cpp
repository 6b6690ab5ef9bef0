#include "app/zephin_stub_window.h"
#include "files/files.h"
#include "platform/framework/application.h"
#include "platform/framework/machine.h"
#include "platform/framework/streams.h"
#include "platform/framework/text.h"
#include "setup/requirements.h"
#include "util/globals.h"
#include "util/paths.h"

namespace zephin {
namespace {

/// Walks the whole table, and shows the message of each requirement that isn't met.
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

/// Whether a file can be written and found at that path; deletes it again.
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
  // Both are checked, so that a machine that meets neither gets both messages.
  const bool systemMeets = Meets(kSystemRequirements, fMinOS, minor);
  const bool memoryMeets = Meets(kMemoryRequirements, fMinRAM, memory);
  return systemMeets && memoryMeets;
}

bool ZephinStubWindow::CheckAdminAccount() {
  const String path = ViewConst::GetApplicationFolderPath() + "X.txt";
  const Ref<FolderItem> item = GlobalsVk::MyGetFolderItem(path);
  if (item.IsNil()) {
    return false;
  }
  // Whoever may write to the Applications folder counts as an administrator, and nobody else does.
  if (ProbeSucceeds(path, item)) {
    return true;
  }
  MsgBox("Cannot Install" + ViewConst::gLineBreak + ViewConst::gLineBreak +
         "An Administrator account is required to run this installer.");
  return false;
}

}  // namespace zephin
