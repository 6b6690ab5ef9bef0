#include "payload/target_name.h"

#include "platform/framework/text.h"

namespace zephin {

bool LiesBelowItsParent(const String& targetName) {
  int depth = 0;
  for (const String& part : Split(targetName, "/")) {
    if (part == "..") {
      --depth;
    } else if (!part.IsEmpty() && !(part == ".")) {
      ++depth;
    }
    if (depth < 0) {
      return false;
    }
  }
  return depth > 0;
}

}  // namespace zephin
