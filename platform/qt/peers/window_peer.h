#ifndef PLATFORM_QT_PEERS_WINDOW_PEER_H_
#define PLATFORM_QT_PEERS_WINDOW_PEER_H_

#include <QDialog>
#include <QEventLoop>
#include <QImage>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "platform/framework/window.h"
#include "platform/qt/peers/control_peer.h"

namespace zephin {

class PushButton;

/// Shows one window of the model: a window of the same size, with a peer for each control at its
/// place, point for point.
class WindowPeer final : public QDialog {
 public:
  /// The window's controls must exist already. Not visible at first.
  explicit WindowPeer(Window& model);
  ~WindowPeer() override;

  /// Null after `Forget`.
  Window* Model() const { return model_; }
  /// Copies the window's properties to the widget, those of its controls not included.
  void Update();
  /// Copies one control's properties. Does nothing if the control isn't in this window.
  void UpdateControl(const Control& control);
  /// Null if the control isn't in this window.
  ControlPeer* PeerOf(const Control& control) const;

  /// Shows the window above `over`, or in the middle of the screen if that is null. Does nothing if
  /// it is visible.
  void Appear(QWidget* over);
  /// Hides the window; every `RunModal` of it returns.
  void Disappear();
  /// Shows the window above all others of the program, which get no input, and returns when it has
  /// been hidden.
  void RunModal(QWidget* over);
  /// True for the first call after each `Appear`, else false.
  bool TakeFirstPaint() { return std::exchange(isNew_, false); }
  /// Called before the model is destroyed: hides the window and drops all references to the model.
  void Forget();

  /// Does what the Return key does: presses the push button that has the focus, or the default
  /// button if another control has it.
  void PressDefault();
  /// Presses the first cancel button that is visible and enabled, if there is one. The toolkit
  /// calls it for the Escape key.
  void reject() override;

 protected:
  /// A request of the window manager. It quits in the main window, hides a window with a close
  /// button, and is ignored elsewhere.
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  /// Reports the user's new size to the model, which moves its controls.
  void resizeEvent(QResizeEvent* event) override;

 private:
  void UpdateSize();
  void UpdatePosition();
  void MarkAnsweringButton();
  const PushButton* AnsweringButton() const;
  void SetTabOrder();
  QWidget* FirstFocus();
  void Press(const PushButton* button) const;

  Window* model_;
  std::vector<std::unique_ptr<ControlPeer>> peers_;
  std::map<const Control*, ControlPeer*> peersByControl_;
  std::vector<ControlPeer*> tabOrder_;  ///< By tab index.
  QImage backdrop_;
  QPoint position_;     ///< The last position that the program has set.
  bool isNew_ = false;  ///< Shown, and nothing has waited for the display since.
  std::vector<QEventLoop*> modalLoops_;
};

}  // namespace zephin

#endif  // PLATFORM_QT_PEERS_WINDOW_PEER_H_
