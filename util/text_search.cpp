#include "util/text_search.h"

#include "platform/framework/application.h"
#include "platform/framework/text.h"

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
  return StrComp(Uppercase(a), Uppercase(b), 1) == 0;
}

}  // namespace zephin::ViewConst
