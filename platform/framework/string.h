#ifndef PLATFORM_FRAMEWORK_STRING_H_
#define PLATFORM_FRAMEWORK_STRING_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace zephin {

/// The encoding that a text is declared to have. `None` is bytes of unknown meaning.
enum class Encoding { None, UTF8, MacRoman, UTF16 };

/// A byte string with a declared encoding. It never changes, drops or checks its bytes; what counts
/// characters (text.h) goes by the declaration, and bytes that are invalid in it count one each.
/// UTF-16 is low byte first, without a byte-order mark; an unpaired surrogate counts one, and so
/// does an odd last byte.
class String {
 public:
  String() = default;
  /// A literal of this program's own source, which is UTF-8. Must not be null.
  String(const char* utf8) : bytes_(utf8) {}
  String(std::string bytes, Encoding encoding) : bytes_(std::move(bytes)), encoding_(encoding) {}

  const std::string& Bytes() const& { return bytes_; }
  std::string Bytes() && { return std::move(bytes_); }
  std::string_view View() const { return bytes_; }
  const char* CString() const { return bytes_.c_str(); }
  Encoding DeclaredEncoding() const { return encoding_; }
  bool IsEmpty() const { return bytes_.empty(); }
  /// Length in bytes.
  std::size_t Size() const { return bytes_.size(); }

  /// Joins the bytes as they are; an empty text adds nothing, not even its label. The result is
  /// labelled
  /// - like the other, if one of the texts is empty or has no encoding,
  /// - like this text, if the encodings are the same or `tail` is plain ASCII,
  /// - like `tail`, if only this text is plain ASCII.
  /// Two texts that both need their label, as any UTF-16 does beside another encoding, are joined
  /// as UTF-8, or where one of them is invalid as they are, labelled like this text.
  String& operator+=(const String& tail);

  /// Exact: the same bytes, whatever their declared encodings. The system's own `=`, which ignores
  /// letter case, is TextEquals (text.h).
  friend bool operator==(const String& a, const String& b) { return a.bytes_ == b.bytes_; }

 private:
  std::string bytes_;
  Encoding encoding_ = Encoding::UTF8;
};

String operator+(String head, const String& tail);

/// A text of UTF-8 bytes, which may hold invalid ones.
inline String Utf8(std::string bytes) {
  return {std::move(bytes), Encoding::UTF8};
}

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_STRING_H_
