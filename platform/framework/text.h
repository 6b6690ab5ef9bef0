#ifndef PLATFORM_FRAMEWORK_TEXT_H_
#define PLATFORM_FRAMEWORK_TEXT_H_

#include <cstdint>

#include "platform/framework/array.h"
#include "platform/framework/string.h"

// The framework's string library. Positions count characters of the searched text's encoding from
// 1 (the B forms: bytes), and 0 means "not found". Parts of a text keep its encoding.
//
// Unless said otherwise letter case is ignored, separators of fields included, by simple folding of
// one character to one, so that positions are those of the original text. Characters are compared
// across encodings; an invalid byte equals only the same invalid byte. A text without encoding is
// compared as if it had the other's, but one that is searched is bytes, and so is then the needle.
// Letter case of bytes without encoding is that of ASCII.

namespace zephin {

/// Number of characters.
std::int64_t Len(const String& text);
/// Number of bytes.
std::int64_t LenB(const String& text);

/// The first / last `count` characters; all of a shorter text, none for a count of 0 or less.
String Left(const String& text, std::int64_t count);
String Right(const String& text, std::int64_t count);
/// `count` characters from `start` on (values below 1 count as 1). Empty for a count of 0 or less
/// or a start behind the end. The form without a count goes to the end.
String Mid(const String& text, std::int64_t start, std::int64_t count);
String Mid(const String& text, std::int64_t start);

/// Position of the first `needle` at or after `start`. An empty needle gives 0, everywhere.
std::int64_t InStr(std::int64_t start, const String& haystack, const String& needle);
std::int64_t InStr(const String& haystack, const String& needle);
/// The same with positions in bytes; exact, letter case counts.
std::int64_t InStrB(std::int64_t start, const String& haystack, const String& needle);

/// Field `index` (from 1) of a text cut at each `separator`; empty past the end or for an index
/// below 1. With an empty separator the whole text is field 1, here and in the two below.
String NthField(const String& text, const String& separator, std::int64_t index);
/// Number of fields: one more than there are separators, 1 for the empty text.
std::int64_t CountFields(const String& text, const String& separator);
/// All fields in one pass. The empty text has no entries at all.
Array<String> Split(const String& text, const String& separator);

/// The number that the text begins with: blanks and line ends are skipped, then a plain decimal
/// number with sign, fraction and exponent. 0 where there is none. No hexadecimal forms, "inf" or
/// locale. Always finite: what is too large for the result becomes its largest number.
double Val(const String& text);
/// `Val`, clamped to the range of the result and truncated towards 0.
std::int64_t ValInteger(const String& text);
/// The number in decimal.
String Str(std::int64_t number);

/// Code of the first character: its code point, but its byte in an encoding of one byte or in none,
/// or where it is invalid. 0 for an empty text.
std::int64_t Asc(const String& text);
/// The text of one character of that code point, as UTF-8; empty for a number that is none.
String Chr(std::uint32_t code);

/// One character becomes one character; a letter whose other form the encoding lacks stays.
String Uppercase(const String& text);
String Lowercase(const String& text);

/// Mode 0: compares bytes. Mode 1: compares characters and ignores letter case. Negative, 0 or
/// positive, like memcmp.
int StrComp(const String& a, const String& b, int mode);
/// The system's `=` on texts: equal when letter case is ignored.
bool TextEquals(const String& a, const String& b);

/// Labels the bytes and changes none of them.
String DefineEncoding(const String& text, Encoding encoding);
/// Transcodes a text that has a declared encoding, and only labels one that has none. A text that
/// the encoding can't hold, or that is invalid in its own, comes back unchanged in its own. With
/// `None` it only loses its label.
String ConvertEncoding(const String& text, Encoding encoding);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_TEXT_H_
