#ifndef PLATFORM_QT_QT_STRING_H_
#define PLATFORM_QT_QT_STRING_H_

#include <QString>

#include "platform/framework/string.h"

// Converts texts between the framework and the toolkit, and escapes what the toolkit would take for
// a mark of its own.

namespace zephin {

/// The text for display. A text without encoding is read as UTF-8 if it is valid UTF-8, else as Mac
/// Roman. Bytes that are invalid in the text's encoding become replacement characters.
QString ToQString(const String& text);
/// In UTF-8.
String FromQString(const QString& text);

/// The text with every line end (CR, LF, CR LF) as one line feed.
QString WithLineFeeds(QString text);
/// Escapes "&", which marks a shortcut key in captions.
QString AsCaption(QString text);
/// Escapes "[*]", which is the place of the mark for a changed document in window titles.
QString AsWindowTitle(QString text);
/// Escapes all markup, since tool tips interpret a text that looks like HTML. Lines break at
/// `width` points.
QString AsToolTip(const QString& text, int width);

}  // namespace zephin

#endif  // PLATFORM_QT_QT_STRING_H_
