#include "platform/qt/reading.h"

#include <QAccessible>

namespace zephin {

Qt::TextInteractionFlags ReadingFlags() {
  Qt::TextInteractionFlags flags = Qt::TextSelectableByMouse;
  flags.setFlag(Qt::TextSelectableByKeyboard, QAccessible::isActive());
  return flags;
}

}  // namespace zephin
