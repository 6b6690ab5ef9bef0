#ifndef PLATFORM_QT_QT_STRING_H_
#define PLATFORM_QT_QT_STRING_H_

#include <QString>

#include "platform/framework/string.h"

// The framework's texts as the toolkit's and back, and the forms in which the toolkit takes a text
// letter for letter where it would otherwise look for marks of its own in it.

namespace zephin {

/// The text to show. Text without encoding is taken for UTF-8 if it is valid as that, else for Mac
/// Roman; bytes that are invalid in the text's encoding show as replacement characters.
QString ToQString(const String& text);
/// As UTF-8.
String FromQString(const QString& text);

/// The text with every line end (CR, LF, CR LF) as one line feed.
QString WithLineFeeds(QString text);
/// For captions: "&" is no mark of a key.
QString AsCaption(QString text);
/// For window titles: "[*]" is no place for the mark of a changed document.
QString AsWindowTitle(QString text);
/// For tool tips, which take what looks like markup for markup.
QString AsToolTip(const QString& text);

}  // namespace zephin

#endif  // PLATFORM_QT_QT_STRING_H_
