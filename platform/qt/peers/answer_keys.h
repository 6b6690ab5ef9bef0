#ifndef PLATFORM_QT_PEERS_ANSWER_KEYS_H_
#define PLATFORM_QT_PEERS_ANSWER_KEYS_H_

#include <QObject>

namespace zephin {

/// Handles the keys that mean the same in every window of the program, before the widget with the
/// focus gets them: Return and Enter press a button, Escape closes or cancels, and the shortcut of
/// the Quit menu item quits. Installed on the toolkit's application. Windows of the toolkit itself,
/// such as the folder dialog, keep their own keys; so do widgets with the shortcuts of the Edit
/// menu.
class KeyFilter final : public QObject {
 public:
  /// True for a key that it has handled. The widget with the focus doesn't get that.
  bool eventFilter(QObject* watched, QEvent* event) override;
};

/// Does what the Quit menu item does: asks each window whether it refuses, and if none does, ends
/// the run. Returns only if one refuses.
void ChooseQuit();

}  // namespace zephin

#endif  // PLATFORM_QT_PEERS_ANSWER_KEYS_H_
