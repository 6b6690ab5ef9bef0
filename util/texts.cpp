#include "util/texts.h"

#include <array>
#include <string>

#include "platform/framework/application.h"
#include "platform/framework/text.h"
#include "util/globals.h"

namespace zephin::ViewConst {

std::int64_t Pos(const String& needle, const String& haystack) {
  return InStr(haystack, needle);
}

std::int64_t PosAfter(const String& needle, const String& haystack, std::int64_t start,
                      bool bytes) {
  return bytes ? InStrB(start, haystack, needle) : InStr(start, haystack, needle);
}

std::int64_t FindField(const String& source, const String& separator, const String& value) {
  std::int64_t index = 0;
  for (const String& field : Split(source, separator)) {
    ++index;
    if (NonCaseMatch(field, value)) {
      return index;
    }
    RuntimeBackgroundTask();
  }
  // An empty text still has one field, the empty one.
  return index == 0 && value.IsEmpty() ? 1 : 0;
}

bool StrSame(const String& a, const String& b) {
  return StrComp(a, b, 0) == 0;
}

bool NonCaseMatch(const String& a, const String& b) {
  // Capitals first: some letters have one capital but two small forms, such as the Greek sigma.
  return StrComp(Uppercase(a), Uppercase(b), 1) == 0;
}

namespace {

constexpr std::size_t kBlock = 1 << 20;

/// For each byte of a text in `encoding`, whether it is the character `ch1`.
std::array<bool, 256> BytesEqualTo(const String& ch1, Encoding encoding) {
  std::array<bool, 256> equal{};
  const String character = ConvertEncoding(ch1, Encoding::MacRoman);
  // A text that stayed in another encoding shares only ASCII with the character to be found.
  const int characters = encoding == Encoding::MacRoman ? 256 : 128;
  for (int code = 0; code < characters && character.Size() == 1; ++code) {
    const String one(std::string(1, static_cast<char>(code)), Encoding::MacRoman);
    equal[static_cast<std::size_t>(code)] = TextEquals(one, character);
  }
  return equal;
}

}  // namespace

String ReplaceCh1WithCh2(const String& text, const String& ch1, const String& ch2) {
  if (text.IsEmpty()) {
    return "";
  }
  const String roman = ConvertEncoding(text, Encoding::MacRoman);
  const Encoding encoding = roman.DeclaredEncoding();
  std::string bytes = roman.Bytes();
  if (!ch1.IsEmpty() && !ch2.IsEmpty()) {
    const std::array<bool, 256> equal = BytesEqualTo(ch1, encoding);
    // One byte for one byte, so that positions in the text stay as they are.
    const char replacement = ch2.Bytes().front();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      bytes[i] = equal[static_cast<unsigned char>(bytes[i])] ? replacement : bytes[i];
      if (i % kBlock == 0) {
        RuntimeBackgroundTask();
      }
    }
  }
  // Read back as a text that ends at its first byte 0.
  bytes.resize(std::min(bytes.find('\0'), bytes.size()));
  return {std::move(bytes), encoding};
}

String FillString(const String& ch, std::int64_t count) {
  if (count <= 0) {
    return "";
  }
  RuntimeBackgroundTask();
  const char byte = static_cast<char>(Asc(ch) % 256);
  return {std::string(static_cast<std::size_t>(count), byte), ch.DeclaredEncoding()};
}

String LineEndingEncoding(const String& text) {
  const String replaced = ReplaceCh1WithCh2(text, gCR, Chr(10));
  // A text that Mac Roman can't hold is still in its own encoding, and must be shown in it.
  return replaced.DeclaredEncoding() == Encoding::UTF8
             ? replaced
             : DefineEncoding(replaced, Encoding::MacRoman);
}

}  // namespace zephin::ViewConst
