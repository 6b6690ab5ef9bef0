#ifndef UTIL_TEXT_SEARCH_H_
#define UTIL_TEXT_SEARCH_H_

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

}  // namespace zephin::ViewConst

#endif  // UTIL_TEXT_SEARCH_H_
