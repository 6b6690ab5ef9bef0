#ifndef PLATFORM_QT_ANSWER_KEYS_H_
#define PLATFORM_QT_ANSWER_KEYS_H_

#include <QObject>

class QKeyEvent;

namespace zephin {

/// A window that Return and Escape answer, whatever in it has the focus.
class AnswersKeys {
 public:
  AnswersKeys() = default;
  AnswersKeys(const AnswersKeys&) = delete;
  AnswersKeys& operator=(const AnswersKeys&) = delete;
  virtual ~AnswersKeys() = default;
  virtual void PressDefault() = 0;
  virtual void PressCancel() = 0;
};

/// Takes the keys that mean the same in all windows before the widget with the focus gets them:
/// Return, Escape, and the shortcut of the application's Quit menu item. The shortcuts of the Edit
/// items are the widgets' own.
class KeyFilter final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

/// Does what the Quit menu item does: asks the windows, and if none refuses, ends the run.
void ChooseQuit();

}  // namespace zephin

#endif  // PLATFORM_QT_ANSWER_KEYS_H_
