#include "selection/selection_list.h"

#include "platform/framework/text.h"

namespace zephin {

std::vector<SelectionEntry> ReadSelectionList(const String& list) {
  std::vector<SelectionEntry> entries;
  for (const String& entry : Split(list, "|")) {
    entries.push_back({NthField(entry, ",", 1), NthField(entry, ",", 2), NthField(entry, ",", 3),
                       NthField(entry, ",", 4)});
  }
  return entries;
}

}  // namespace zephin
