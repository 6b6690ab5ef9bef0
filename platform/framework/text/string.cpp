#include "platform/framework/string.h"

#include <optional>

#include "platform/framework/text/encodings.h"

namespace zephin {
namespace {

/// The bytes of a text as UTF-8; nothing if it is invalid in its encoding.
std::optional<std::string> AsUtf8(const String& text) {
  if (text.DeclaredEncoding() == Encoding::UTF8) {
    return text.Bytes();
  }
  return Transcode(text.View(), text.DeclaredEncoding(), Encoding::UTF8);
}

/// Whether the bytes of `text` would mean other characters in the encoding of `other`.
bool NeedsItsLabel(const String& text, const String& other) {
  return text.DeclaredEncoding() == Encoding::UTF16 ||
         other.DeclaredEncoding() == Encoding::UTF16 || !IsAscii(text.View());
}

}  // namespace

String& String::operator+=(const String& tail) {
  if (IsEmpty()) {
    return *this = tail;
  }
  if (tail.IsEmpty() || encoding_ == tail.encoding_ || tail.encoding_ == Encoding::None) {
    bytes_ += tail.bytes_;
    return *this;
  }
  // The tail is checked first, so that a long text to which short pieces are appended is not read
  // for each of them.
  if (encoding_ == Encoding::None) {
    encoding_ = tail.encoding_;
  } else if (NeedsItsLabel(tail, *this)) {
    if (!NeedsItsLabel(*this, tail)) {
      encoding_ = tail.encoding_;
    } else if (auto head = AsUtf8(*this), end = AsUtf8(tail); head && end) {
      *this = Utf8(std::move(*head) + *end);
      return *this;
    }
  }
  bytes_ += tail.bytes_;
  return *this;
}

String operator+(String head, const String& tail) {
  head += tail;
  return head;
}

}  // namespace zephin
