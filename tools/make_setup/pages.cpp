#include "tools/make_setup/pages.h"

#include <string_view>

#include "platform/framework/text.h"
#include "setup/record.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/record_writer.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

void UnifyLineEnds(std::string& text) {
  for (std::size_t at = 0; (at = text.find('\r', at)) != std::string::npos; ++at) {
    text.replace(at, text.compare(at, 2, "\r\n") == 0 ? 2 : 1, "\n");
  }
}

/// Whether the installer reads the page back from its stored form. It doesn't if the page contains
/// a "|", which becomes a line end, the marker of the other form, or a line "#", which becomes the
/// record's separator.
bool SurvivesInMacRoman(const String& page) {
  const std::string stored = StoredPage(page);
  return page.DeclaredEncoding() == Encoding::MacRoman &&
         DecodePage({stored, Encoding::None}) == page &&
         ("|" + stored + "|").find(kTextDataSeparator) == std::string::npos;
}

void CheckKind(const String& page, PageKind kind) {
  const bool isShownAsHtml = InStr(page, "<html>") != 0;
  if (kind == PageKind::Html && !isShownAsHtml) {
    throw SetupError(R"(must contain "<html>": without it HTML is shown as plain text)");
  }
  if (kind == PageKind::Plain && isShownAsHtml) {
    throw SetupError(R"(must not contain "<html>": plain text with it is shown as HTML)");
  }
}

}  // namespace

String MakePage(std::string utf8, PageKind kind, PageForm form) {
  // The record knows one kind of line end, written as "|" or as a line feed in digits.
  UnifyLineEnds(utf8);
  String page = Utf8(utf8);
  if (ConvertEncoding(page, Encoding::UTF16).DeclaredEncoding() != Encoding::UTF16) {
    throw SetupError("must be UTF-8 text");
  }
  if (utf8.find('\0') != std::string::npos) {
    throw SetupError("must not contain a zero character: the page would end there");
  }
  if (page.IsEmpty()) {
    return page;
  }
  CheckKind(page, kind);
  const String macRoman = ConvertEncoding(page, Encoding::MacRoman);
  const bool survives = SurvivesInMacRoman(macRoman);
  if (form == PageForm::MacRoman && !survives) {
    throw SetupError(
        R"(can't be stored in Mac Roman: contains a character that it lacks, "|", a line "#" or )" +
        Quoted(kHexPageMarker) + R"(; the form "hex" stores any text)");
  }
  return form == PageForm::Hex || !survives ? page : macRoman;
}

String ReadPage(const std::filesystem::path& folder, const std::string& name, PageForm form) {
  const std::string extension = std::filesystem::path(name).extension().string();
  if (extension != ".txt" && extension != ".html") {
    throw SetupError(Quoted(name) + R"(: must be a file "*.txt" or "*.html")");
  }
  std::string text = ReadFile(folder / name);
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) {
    text.erase(0, kByteOrderMark.size());
  }
  // Editors end a file with a line end, which would be an empty line in the window.
  if (text.ends_with('\n')) {
    text.pop_back();
  }
  return At(name, [&] {
    return MakePage(std::move(text), extension == ".html" ? PageKind::Html : PageKind::Plain, form);
  });
}

}  // namespace zephin::make_setup
