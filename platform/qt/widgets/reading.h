#ifndef PLATFORM_QT_READING_H_
#define PLATFORM_QT_READING_H_

#include <Qt>

class QPlainTextEdit;

namespace zephin {

/// How a text that is only read answers the mouse and the keyboard: it scrolls, and can be selected
/// and copied. Where a screen reader runs it has a caret too, which the screen reader follows;
/// elsewhere that would be in the way of scrolling with the arrow keys.
Qt::TextInteractionFlags ReadingFlags();

/// Has a text of paragraphs without a form of their own stand at the side at which its script
/// begins: all of them at the side of the first, as on a printed page.
void AlignToScript(QPlainTextEdit& text);

}  // namespace zephin

#endif  // PLATFORM_QT_READING_H_
