// What the progress window and the failure window have in common.
#ifndef PLATFORM_QT_EXPANSION_WINDOW_PARTS_H_
#define PLATFORM_QT_EXPANSION_WINDOW_PARTS_H_

#include <QFont>
#include <QString>

class QPushButton;
class QWidget;

namespace zephin {

class TextWidget;

/// A window of the task bar with a title and a button to close it, and no others.
Qt::WindowFlags FlagsOfWindow();

QFont BoldFont();

/// A text of that width in points, as high as it needs to be, which screen readers read. A name
/// without spaces breaks inside.
TextWidget* MakeText(QWidget* parent, const QString& text, const QFont& font, int width);
void ChangeText(TextWidget& widget, const QString& text, const QFont& font, int width);

/// A button that is as wide as its caption needs.
QPushButton* MakeButton(QWidget* parent, const QString& caption);

/// Shows the window beside the installer's windows. It doesn't take the focus from them.
void ShowBeside(QWidget& window);

/// Gives the texts and failures of these windows their roles for screen readers.
void SetUpRoles();

}  // namespace zephin

#endif  // PLATFORM_QT_EXPANSION_WINDOW_PARTS_H_
