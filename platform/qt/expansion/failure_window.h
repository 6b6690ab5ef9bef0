#ifndef PLATFORM_QT_EXPANSION_FAILURE_WINDOW_H_
#define PLATFORM_QT_EXPANSION_FAILURE_WINDOW_H_

#include <QDialog>

#include "platform/qt/expansion/failure_text.h"
#include "platform/qt/expansion/words.h"

class QHBoxLayout;

namespace zephin {

/// Says that an expansion has failed, until the user closes it. "Details" shows a list that can be
/// copied; without details there is no such button.
class FailureWindow final : public QDialog {
 public:
  FailureWindow(const Words& words, const FailureText& text);

  /// Shows it beside the installer. It takes the focus only if no installer is visible: a key that
  /// was meant for that one must not close it unread. Screen readers read it at once.
  void Appear();

 private:
  QWidget* MakeSign(const Words& words);
  QWidget* MakeList(const QString& name, const QString& details);
};

}  // namespace zephin

#endif  // PLATFORM_QT_EXPANSION_FAILURE_WINDOW_H_
