#ifndef UTIL_TEXTS_H_
#define UTIL_TEXTS_H_

#include <cstdint>

#include "platform/framework/string.h"

/// Searching and comparing texts. Positions count characters from 1; 0 means "not found", also for
/// an empty needle. Letter case is ignored unless said otherwise.
namespace zephin::ViewConst {

/// Position of the first occurrence. The needle comes first, unlike in InStr.
std::int64_t Pos(const String& needle, const String& haystack);

/// Position of the first occurrence at or after `start`: in bytes, exact, if `bytes`; else in
/// characters.
std::int64_t PosAfter(const String& needle, const String& haystack, std::int64_t start, bool bytes);

/// Number (from 1) of the first field of `source` that matches `value`; 0 if none does.
std::int64_t FindField(const String& source, const String& separator, const String& value);

/// The same byte for byte, letter case included.
bool StrSame(const String& a, const String& b);

/// Equal when letter case is ignored.
bool NonCaseMatch(const String& a, const String& b);

// Making texts byte by byte, by way of Mac Roman, in which a character is one byte.

/// Swaps one character for another. The text goes to Mac Roman first; one that this can't hold
/// stays in its own encoding, and only an ASCII `ch1` is then found in it. Letter case is ignored
/// in the search. Only the first byte of `ch2` is written. A byte 0, in the text or from
/// `ch2`, cuts the result short.
String ReplaceCh1WithCh2(const String& text, const String& ch1, const String& ch2);

/// `count` times the byte that is the code of the first character of `ch` modulo 256; empty for a
/// count below 1.
String FillString(const String& ch, std::int64_t count);

/// Labels a text as Mac Roman, to which it has been converted if that can hold it. The line ends
/// that it was once meant to replace are those of gCR, which is empty: every one stays.
String LineEndingEncoding(const String& text);

}  // namespace zephin::ViewConst

#endif  // UTIL_TEXTS_H_
