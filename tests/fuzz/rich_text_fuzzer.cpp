// Reads any bytes as a page of the record, both plain and in hexadecimal digits. Finds lost bytes
// in plain pages, and lost or wrong units in pages of digits.
#include <algorithm>
#include <string>

#include "platform/framework/text.h"
#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"

namespace zephin::test {
namespace {

constexpr const char* kMarker = "$HTML$";

String Read(const std::string& field) {
  return BareStub().BareWindow().ReadPlainOrHtmlText(Utf8(field));
}

void CheckPlain(std::string field) {
  const String page = Read(field);
  if (InStr(Utf8(field), kMarker) == 0) {
    std::replace(field.begin(), field.end(), '|', '\n');
    Require(page.Bytes() == field.substr(0, field.find('\0')));
    Require(page.DeclaredEncoding() == Encoding::MacRoman);
  }
}

void CheckDigits(const std::string& digits) {
  const String page = Read(kMarker + digits);
  const std::string units = ConvertEncoding(page, Encoding::UTF16).Bytes();
  Require(page.DeclaredEncoding() == Encoding::UTF8);
  Require(units.size() == std::min(digits.find('\0'), digits.size()) / 4 * 2);
  std::string again;
  for (const char unit : units) {
    const auto byte = static_cast<unsigned char>(unit);
    again += {"0123456789ABCDEF"[byte / 16], "0123456789ABCDEF"[byte % 16]};
  }
  Require(Read(kMarker + again) == page);
}

}  // namespace

void TryInput(std::string_view input) {
  CheckPlain(std::string(input));
  CheckDigits(std::string(input));
}

}  // namespace zephin::test
