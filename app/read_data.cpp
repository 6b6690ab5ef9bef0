#include "app/zephin_stub_window.h"
#include "platform/framework/application.h"
#include "platform/framework/streams.h"
#include "platform/framework/text.h"
#include "setup/bundle_files.h"
#include "util/paths.h"

namespace zephin {
namespace {

/// The bundle's Resources folder; nil if it can't be found. The look-up goes by the bundle's name
/// in the folder that holds it, not by its path, as a folder above it may be called "Contents",
/// too.
Ref<FolderItem> ResourcesByBundleName() {
  using ViewConst::ExtractFileName;
  const String path = ViewConst::MyAbsolutePath(Application::Current().ExecutableFile());
  const std::int64_t position = ViewConst::ContentsPosition(path);
  const Ref<FolderItem> bundle =
      GetFolderItem(position > 0 ? ExtractFileName(Left(path, position - 1)) : path);
  const Ref<FolderItem> contents = bundle.IsNil() ? nullptr : bundle->Child("Contents", true);
  return contents.IsNil() ? nullptr : contents->Child("Resources", true);
}

/// A file of the record; nil if it is missing or empty.
Ref<FolderItem> FullFile(const Ref<FolderItem>& resources, const char* name) {
  const Ref<FolderItem> file = resources.IsNil() ? nullptr : resources->Child(name);
  return file.IsNil() || file->Length() <= 0 ? nullptr : file;
}

// The content of a file, without encoding; empty if there is none. One that exists and can't be
// opened raises NilObjectException: an installer with half a record must not go on.

String BytesOf(const Ref<FolderItem>& file) {
  return file.IsNil() ? String("", Encoding::None)
                      : file->OpenAsBinaryFile(false)->Read(file->Length());
}

String TextOf(const Ref<FolderItem>& file) {
  return file.IsNil() ? String("", Encoding::None) : TextInputStream::Open(file)->ReadAll();
}

}  // namespace

bool ZephinStubWindow::ReadData() {
  const Ref<FolderItem> resources = ResourcesByBundleName();
  String data = BytesOf(FullFile(resources, kDataFile));
  const String textData =
      ConvertEncoding(TextOf(FullFile(resources, kTextDataFile)), Encoding::UTF8);
  if (data.IsEmpty()) {
    return false;
  }
  ViewConst::DecryptStr(data);
  // Nothing has set a field before: each still has its default if the record has none for it.
  static_cast<SetupRecord&>(*this) = ReadRecord(data, textData);
  return true;
}

String ZephinStubWindow::ReadPlainOrHtmlText(const String& text) const {
  return DecodePage(text);
}

}  // namespace zephin
