#include "app/zephin_stub_window.h"
#include "dialogs/pixel_strings.h"
#include "platform/framework/application.h"
#include "platform/framework/streams.h"
#include "platform/framework/text.h"
#include "setup/scrambling.h"
#include "util/paths.h"
#include "util/text_building.h"
#include "util/text_search.h"

// The setup record is two files in the bundle's Resources folder. `Data`, scrambled, has twelve
// positions, `TextData`, plain, has twenty-nine; a position means what it does because of where it
// stands, and one that isn't there reads as empty.
//
//   Data      stamp$|~1$|~Welcome.app$|~F[24],2,2$|~$|~$|~1$|~$|~$|~0$|~0$|~
//   TextData  First line|Second line|#|A message|#|www.example.com|#|...

namespace zephin {
namespace {

/// The positions of a record, read one after the other.
class Positions {
 public:
  Positions(const String& record, const char* separator) : fields_(Split(record, separator)) {}

  String Next() {
    String field = next_ < fields_.Count() ? fields_(next_) : String();
    ++next_;
    return field;
  }
  bool NextFlag() { return ViewConst::StrSame(Next(), "1"); }
  void Skip(std::int64_t count) { next_ += count; }

 private:
  Array<String> fields_;
  std::int64_t next_ = 0;
};

/// The bundle's Resources folder, looked up by the bundle's name in the folder that holds it. Nil
/// if it can't be found.
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

// What a file holds, without encoding; empty if there is none. One that is there and can't be
// opened raises NilObjectException: an installer with half a record must not go on.

String BytesOf(const Ref<FolderItem>& file) {
  return file.IsNil() ? String("", Encoding::None)
                      : file->OpenAsBinaryFile(false)->Read(file->Length());
}

String TextOf(const Ref<FolderItem>& file) {
  return file.IsNil() ? String("", Encoding::None) : TextInputStream::Open(file)->ReadAll();
}

/// Cuts a picture triple "pixels,width,height", such as "F[24],2,2"; an empty one leaves all as it
/// is.
void CutTriple(String& pixels, std::int64_t& width, std::int64_t& height) {
  if (!pixels.IsEmpty()) {
    width = ValInteger(NthField(pixels, ",", 2));
    height = ValInteger(NthField(pixels, ",", 3));
    pixels = NthField(pixels, ",", 1);
  }
}

void FillFromData(ZephinStubWindow& w, const String& record) {
  Positions data(record, "$|~");
  w.fTimeStamp = data.Next();
  w.fApplicationFolder = data.NextFlag();
  w.fExecuteAfterName = data.Next();
  w.fLogoPixelStr = data.Next();
  CutTriple(w.fLogoPixelStr, w.fLogoWidth, w.fLogoHeight);
  data.Skip(1);
  w.fPicturePixelStr = data.Next();
  CutTriple(w.fPicturePixelStr, w.fPictureWidth, w.fPictureHeight);
  w.fPromptToReplace = data.NextFlag();
  w.fExecuteBeforeName = data.Next();
  w.fBackgroundPixelStr = data.Next();
  CutTriple(w.fBackgroundPixelStr, w.fBackgroundWidth, w.fBackgroundHeight);
  w.fEncryptionLen = ValInteger(data.Next());
  w.fCenterMessage = data.NextFlag();
}

void FillFromTextData(ZephinStubWindow& w, const String& record) {
  Positions text(record, "|#|");
  w.fAgreement = w.ReadPlainOrHtmlText(text.Next());
  w.fMessage = text.Next();
  w.fURLActual = text.Next();
  w.fURLDisplayed = text.Next();
  w.fInfo = w.ReadPlainOrHtmlText(text.Next());
  w.fLabels = Split(text.Next(), "|");
  w.fTargetFolder = text.Next();
  w.fCopyright = text.Next();
  w.fWindowTitle = text.Next();
  text.Skip(3);
  w.fInstallationPatch = text.NextFlag();
  text.Skip(8);
  w.fInstallChoices = text.Next();
  w.fInstallOptions = text.Next();
  w.fMinOS = text.Next();
  w.fMinRAM = text.Next();
  w.fCompletionURL = text.Next();
  w.fPreInstallNotes = w.ReadPlainOrHtmlText(text.Next());
  w.fPostInstallNotes = w.ReadPlainOrHtmlText(text.Next());
  w.fPostCopy = text.Next();
}

}  // namespace

bool ZephinStubWindow::ReadData() {
  const Ref<FolderItem> resources = ResourcesByBundleName();
  String data = BytesOf(FullFile(resources, "Data"));
  const String textData = ConvertEncoding(TextOf(FullFile(resources, "TextData")), Encoding::UTF8);
  if (data.IsEmpty()) {
    return false;
  }
  ViewConst::DecryptStr(data);
  FillFromData(*this, data);
  FillFromTextData(*this, textData);
  return true;
}

String ZephinStubWindow::ReadPlainOrHtmlText(const String& text) const {
  constexpr std::int64_t kMarkerLength = 6;
  const auto withLineFeeds = [](const String& field) {
    // As bytes without a label: those of a page are Mac Roman already, whatever they look like.
    return ViewConst::ReplaceCh1WithCh2(DefineEncoding(field, Encoding::None), "|", Chr(10));
  };
  if (ViewConst::Pos("$HTML$", text) > 0) {
    // Six characters go from the start, wherever the marker stands.
    const String digits = Mid(text, kMarkerLength + 1, Len(text) - kMarkerLength);
    return DefineEncoding(ViewConst::UnicodeFromHex(withLineFeeds(digits), true), Encoding::UTF8);
  }
  return DefineEncoding(withLineFeeds(text), Encoding::MacRoman);
}

}  // namespace zephin
