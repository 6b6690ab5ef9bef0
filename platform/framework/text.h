#ifndef PLATFORM_FRAMEWORK_TEXT_H_
#define PLATFORM_FRAMEWORK_TEXT_H_

#include <cstdint>

#include "platform/framework/array.h"
#include "platform/framework/string.h"

// The framework's string functions, defined in text/text.cpp unless a heading says otherwise.
// Positions count characters of the searched text's encoding from 1 (in the B forms: bytes); 0
// means "not found". Parts of a text keep its encoding.
//
// Letter case is ignored where nothing else is said, also in the separators of fields. Each
// character is folded to one character, so that positions refer to the original text. Characters
// are compared across encodings; an invalid byte equals only the same invalid byte. A text without
// encoding is compared as if it had the other text's encoding, except that a searched text without
// encoding is searched as bytes, and the needle too. In bytes without encoding only ASCII letters
// have letter case.

namespace zephin {

/// Number of characters.
std::int64_t Len(const String& text);
/// Number of bytes.
std::int64_t LenB(const String& text);

/// The first or last `count` characters: all if the text is shorter, none if the count is 0 or
/// less.
String Left(const String& text, std::int64_t count);
String Right(const String& text, std::int64_t count);
/// `count` characters from position `start` (below 1: from 1). Empty if the count is 0 or less or
/// the text ends before `start`. Without a count: to the end of the text.
String Mid(const String& text, std::int64_t start, std::int64_t count);
String Mid(const String& text, std::int64_t start);

/// Position of the first `needle` at or after `start`; 0 if there is none or the needle is empty.
std::int64_t InStr(std::int64_t start, const String& haystack, const String& needle);
std::int64_t InStr(const String& haystack, const String& needle);
/// The same by bytes: positions count bytes, and letter case matters.
std::int64_t InStrB(std::int64_t start, const String& haystack, const String& needle);

// Fields: text/text_fields.cpp.

/// Field `index` (from 1) of a text that is divided by `separator`; empty if there is no such
/// field. An empty separator makes the whole text one field, also in the next two functions.
String NthField(const String& text, const String& separator, std::int64_t index);
/// Number of fields: one more than separators, so 1 for the empty text.
std::int64_t CountFields(const String& text, const String& separator);
/// All fields in one pass. Unlike CountFields, the empty text has no fields here.
Array<String> Split(const String& text, const String& separator);

// Numbers: text/text_numbers.cpp.

/// The decimal number at the beginning of the text, after white space: sign, digits, fraction and
/// exponent. 0 if there is none. Hexadecimal forms, "inf" and the locale have no effect. The result
/// is finite: a number that is too large becomes the largest double.
double Val(const String& text);
/// `Val`, truncated towards 0 and limited to the range of the result.
std::int64_t ValInteger(const String& text);
/// The number in decimal.
String Str(std::int64_t number);

/// Code of the first character: its code point; for Mac Roman, for a text without encoding, and for
/// an invalid byte the value of the byte. 0 for the empty text.
std::int64_t Asc(const String& text);
/// The character with this code point, as UTF-8; empty if the number is not a code point.
String Chr(std::uint32_t code);

// Letter case: text/text_case.cpp.

/// Maps each character to one character. A letter stays if the encoding lacks its other form.
String Uppercase(const String& text);
String Lowercase(const String& text);

/// Negative, 0 or positive, like memcmp. Mode 0 compares bytes; mode 1 compares characters and
/// ignores letter case.
int StrComp(const String& a, const String& b, int mode);
/// Whether the texts are equal when letter case is ignored.
bool TextEquals(const String& a, const String& b);

/// The same bytes with another declared encoding.
String DefineEncoding(const String& text, Encoding encoding);
/// Converts the bytes of a text with a declared encoding; only labels the bytes of a text without
/// one. A text that is invalid in its encoding, or that the new encoding cannot represent, is
/// returned unchanged with its own encoding. With `None` the text only loses its label.
String ConvertEncoding(const String& text, Encoding encoding);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_TEXT_H_
