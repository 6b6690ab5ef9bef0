#include "setup/selection_list.h"

#include "platform/framework/text.h"

namespace zephin {

std::vector<SelectionEntry> ReadSelectionList(const String& list) {
  std::vector<SelectionEntry> entries;
  for (const String& entry : Split(list, kSelectionSeparator)) {
    const auto part = [&entry](std::int64_t number) {
      return NthField(entry, kSelectionPartSeparator, number);
    };
    entries.push_back({part(1), part(2), part(3), part(4)});
  }
  return entries;
}

}  // namespace zephin
