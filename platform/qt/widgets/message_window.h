#ifndef PLATFORM_QT_WIDGETS_MESSAGE_WINDOW_H_
#define PLATFORM_QT_WIDGETS_MESSAGE_WINDOW_H_

#include <QDialog>
#include <QString>

namespace zephin {

/// A modal message with a sign and one button, "OK". The text is shown letter for letter, without
/// markup; one that is too long for the screen scrolls. Return and Escape close the window.
class MessageWindow final : public QDialog {
 public:
  enum class Sign {
    Information,
    Warning,  ///< For what the user must do something about.
  };

  /// `title` and `text` may be empty. The text of a right-to-left script is aligned to the right.
  MessageWindow(const QString& title, const QString& text, Sign sign);

  /// Shows the window above `over`, or in the middle of the screen if that is null, and returns
  /// when the user has closed it.
  void Run(QWidget* over);

 private:
  QWidget* MakeSign(Sign sign);
  QWidget* MakeText(const QString& text);
};

}  // namespace zephin

#endif  // PLATFORM_QT_WIDGETS_MESSAGE_WINDOW_H_
