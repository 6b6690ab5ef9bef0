#include "tools/make_setup/pages.h"

#include <algorithm>

#include "platform/framework/text.h"
#include "tools/make_setup/record_writer.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

void UnifyLineEnds(std::string& text) {
  for (std::size_t at = 0; (at = text.find('\r', at)) != std::string::npos; ++at) {
    text.replace(at, text.compare(at, 2, "\r\n") == 0 ? 2 : 1, "\n");
  }
}

bool Holds(const std::string& text, const char* mark) {
  return InStr(Utf8(text), mark) != 0;
}

/// Empty if the record can hold `text` in Mac Roman, else the reason why it can't.
std::string ObstacleToMacRoman(const std::string& text) {
  if (ConvertEncoding(Utf8(text), Encoding::MacRoman).DeclaredEncoding() != Encoding::MacRoman) {
    return "holds a character that Mac Roman doesn't have";
  }
  if (text.find('|') != std::string::npos) {
    return R"(holds a "|", which would become a line end)";
  }
  if (("\n" + text + "\n").find("\n#\n") != std::string::npos) {
    return R"(has a line "#", which would become the record's separator)";
  }
  if (Holds(text, "$HTML$")) {
    return R"(holds "$HTML$", the mark of the other form)";
  }
  return "";
}

}  // namespace

std::string PageText(std::string utf8, PageKind kind, PageForm form) {
  UnifyLineEnds(utf8);
  const String utf16 = ConvertEncoding(Utf8(utf8), Encoding::UTF16);
  if (utf16.DeclaredEncoding() != Encoding::UTF16) {
    throw SetupError("is not valid UTF-8");
  }
  if (utf8.find('\0') != std::string::npos) {
    throw SetupError("holds a zero character, where the page would end");
  }
  if (utf8.empty()) {
    return "";
  }
  if (Holds(utf8, "<html>") != (kind == PageKind::Html)) {
    throw SetupError(kind == PageKind::Html
                         ? R"(is HTML without "<html>", so it would be shown as plain text)"
                         : R"(is plain text with "<html>", so it would be shown as HTML)");
  }
  const std::string obstacle = ObstacleToMacRoman(utf8);
  if (form == PageForm::MacRoman && !obstacle.empty()) {
    throw SetupError(obstacle);
  }
  if (form == PageForm::Hex || !obstacle.empty()) {
    return "$HTML$" + HexDigits(utf16.Bytes());
  }
  std::string page = ConvertEncoding(Utf8(utf8), Encoding::MacRoman).Bytes();
  std::replace(page.begin(), page.end(), '\n', '|');
  return page;
}

}  // namespace zephin::make_setup
