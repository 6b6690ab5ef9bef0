#include "platform/framework/text.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/framework/text/case_folding.h"
#include "platform/framework/text/encodings.h"
#include "platform/framework/text/text_search.h"

namespace zephin {
namespace {

String Part(const String& text, std::string_view bytes) {
  return {std::string(bytes), text.DeclaredEncoding()};
}

/// Byte offset of the character at a position, which counts from 1.
std::size_t OffsetOf(const String& text, std::int64_t position) {
  // Setups count from 0 here and there; that has always meant the first character.
  const std::int64_t index = std::max<std::int64_t>(position, 1) - 1;
  return OffsetOfCharacter(text.View(), text.DeclaredEncoding(), static_cast<std::size_t>(index));
}

std::int64_t Position(std::size_t charactersBefore) {
  return static_cast<std::int64_t>(charactersBefore) + 1;
}

}  // namespace

std::int64_t Len(const String& text) {
  return static_cast<std::int64_t>(CountCharacters(text.View(), text.DeclaredEncoding()));
}

std::int64_t LenB(const String& text) {
  return static_cast<std::int64_t>(text.Size());
}

String Left(const String& text, std::int64_t count) {
  return Mid(text, 1, count);
}

String Right(const String& text, std::int64_t count) {
  if (count <= 0) {
    return Part(text, {});
  }
  const std::int64_t length = Len(text);
  return count >= length ? text : Mid(text, length - count + 1);
}

String Mid(const String& text, std::int64_t start, std::int64_t count) {
  if (count <= 0) {
    return Part(text, {});
  }
  const std::string_view rest = text.View().substr(OffsetOf(text, start));
  const std::size_t size =
      OffsetOfCharacter(rest, text.DeclaredEncoding(), static_cast<std::size_t>(count));
  return Part(text, rest.substr(0, size));
}

String Mid(const String& text, std::int64_t start) {
  return Part(text, text.View().substr(OffsetOf(text, start)));
}

std::int64_t InStr(std::int64_t start, const String& haystack, const String& needle) {
  const std::size_t offset = OffsetOf(haystack, start);
  const auto match = TextSearch(haystack, needle).FindFrom(offset);
  if (!match) {
    return 0;
  }
  // Only the characters since `start` are counted: a loop over all matches stays linear.
  const std::string_view before = haystack.View().substr(offset, match->begin - offset);
  const std::int64_t first = std::max<std::int64_t>(start, 1);
  return first - 1 + Position(CountCharacters(before, haystack.DeclaredEncoding()));
}

std::int64_t InStr(const String& haystack, const String& needle) {
  return InStr(1, haystack, needle);
}

std::int64_t InStrB(std::int64_t start, const String& haystack, const String& needle) {
  const std::int64_t index = std::max<std::int64_t>(start, 1) - 1;
  // memmem finds an empty needle everywhere; here it is found nowhere.
  if (needle.IsEmpty() || index >= LenB(haystack)) {
    return 0;
  }
  const std::string_view rest = haystack.View().substr(static_cast<std::size_t>(index));
  const void* found = memmem(rest.data(), rest.size(), needle.View().data(), needle.Size());
  return found == nullptr ? 0 : static_cast<const char*>(found) - haystack.View().data() + 1;
}

std::int64_t Asc(const String& text) {
  if (text.IsEmpty()) {
    return 0;
  }
  // The byte, not the character's Unicode number: setups were made by byte values.
  if (text.DeclaredEncoding() == Encoding::MacRoman) {
    return static_cast<unsigned char>(text.View().front());
  }
  const std::uint32_t code = DecodeCharacter(text.View(), 0, text.DeclaredEncoding()).code;
  // An invalid byte gives its own value.
  return code < kRawByte ? code : code - kRawByte;
}

String Chr(std::uint32_t code) {
  std::string bytes;
  // Surrogates and numbers beyond Unicode have no UTF-8.
  const bool isCharacter =
      code < kRawByte && utf8proc_codepoint_valid(static_cast<utf8proc_int32_t>(code));
  if (!isCharacter || !AppendCharacter(bytes, code, Encoding::UTF8)) {
    return {};
  }
  return Utf8(std::move(bytes));
}

String DefineEncoding(const String& text, Encoding encoding) {
  return {text.Bytes(), encoding};
}

String ConvertEncoding(const String& text, Encoding encoding) {
  const Encoding own = text.DeclaredEncoding();
  if (own == Encoding::None || encoding == Encoding::None) {
    return DefineEncoding(text, encoding);
  }
  if (own == encoding) {
    return text;
  }
  auto converted = Transcode(text.View(), own, encoding);
  // A text that the other encoding cannot hold stays whole in its own: nothing is replaced by "?".
  return converted ? String(std::move(*converted), encoding) : text;
}

}  // namespace zephin
