#ifndef PLATFORM_QT_MESSAGE_WINDOW_H_
#define PLATFORM_QT_MESSAGE_WINDOW_H_

#include <QDialog>
#include <QString>

#include "platform/qt/peers/answer_keys.h"

namespace zephin {

/// A modal message with one button, "OK". The text shows letter for letter; one that is too long
/// for the screen scrolls. Return and Escape close it.
class MessageWindow final : public QDialog, public AnswersKeys {
 public:
  MessageWindow(const QString& title, const QString& text);

  /// Shows it above `over` (null: in the middle of the screen) and returns when it is closed.
  void Run(QWidget* over);

  void PressDefault() override { accept(); }
  void PressCancel() override { accept(); }

 private:
  QWidget* MakeText(const QString& text);
};

}  // namespace zephin

#endif  // PLATFORM_QT_MESSAGE_WINDOW_H_
