#include "platform/qt/widgets/reading.h"

#include <QPlainTextEdit>
#include <QTextOption>

#include <QAccessible>

namespace zephin {

Qt::TextInteractionFlags ReadingFlags() {
  Qt::TextInteractionFlags flags = Qt::TextSelectableByMouse;
  flags.setFlag(Qt::TextSelectableByKeyboard, QAccessible::isActive());
  return flags;
}

void AlignToScript(QPlainTextEdit& text) {
  QTextOption option = text.document()->defaultTextOption();
  option.setAlignment(text.toPlainText().isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
  text.document()->setDefaultTextOption(option);
}

}  // namespace zephin
