#ifndef PLATFORM_FRAMEWORK_STRING_H_
#define PLATFORM_FRAMEWORK_STRING_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace zephin {

/// The declared encoding of a text. `None` means bytes of unknown meaning.
enum class Encoding { None, UTF8, MacRoman, UTF16 };

/// A byte string with a declared encoding. The class never changes, drops or checks the bytes. The
/// functions in text.h count characters of the declared encoding, where each invalid byte counts as
/// one character. UTF-16 is little-endian without a byte-order mark; an unpaired surrogate counts
/// as one character, and so does an odd last byte.
class String {
 public:
  /// The empty text, in UTF-8.
  String() = default;
  /// A literal in this program's source, which is UTF-8. Must not be null.
  String(const char* utf8) : bytes_(utf8) {}
  String(std::string bytes, Encoding encoding) : bytes_(std::move(bytes)), encoding_(encoding) {}

  const std::string& Bytes() const& { return bytes_; }
  std::string Bytes() && { return std::move(bytes_); }
  std::string_view View() const { return bytes_; }
  /// Ends with a byte 0, but may hold others before it.
  const char* CString() const { return bytes_.c_str(); }
  Encoding DeclaredEncoding() const { return encoding_; }
  bool IsEmpty() const { return bytes_.empty(); }
  /// Length in bytes.
  std::size_t Size() const { return bytes_.size(); }

  /// Appends the bytes unchanged. Appending an empty text changes nothing. The encoding of the
  /// result is
  /// - the other's, if one of the texts is empty or has no encoding,
  /// - this text's, if both encodings are equal or `tail` is plain ASCII,
  /// - that of `tail`, if only this text is plain ASCII.
  /// Otherwise both texts are converted to UTF-8 first. UTF-16 is never plain ASCII here, since its
  /// bytes are not. If a text is invalid in its encoding, the bytes are joined unchanged and the
  /// result has this text's encoding.
  String& operator+=(const String& tail);

  /// Whether the bytes are equal; encodings are ignored. TextEquals (text.h) ignores letter case.
  friend bool operator==(const String& a, const String& b) { return a.bytes_ == b.bytes_; }

 private:
  std::string bytes_;
  Encoding encoding_ = Encoding::UTF8;
};

/// Joins two texts like `+=`.
String operator+(String head, const String& tail);

/// A text in UTF-8; the bytes may be invalid.
inline String Utf8(std::string bytes) {
  return {std::move(bytes), Encoding::UTF8};
}

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_STRING_H_
