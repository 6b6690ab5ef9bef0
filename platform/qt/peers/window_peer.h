#ifndef PLATFORM_QT_WINDOW_PEER_H_
#define PLATFORM_QT_WINDOW_PEER_H_

#include <QDialog>
#include <QEventLoop>
#include <QImage>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "platform/framework/window.h"
#include "platform/qt/peers/answer_keys.h"
#include "platform/qt/peers/control_peer.h"

namespace zephin {

class PushButton;

/// What shows one window of the model: a window of the same size with a peer for each control at
/// its place, point for point.
class WindowPeer final : public QDialog, public AnswersKeys {
 public:
  explicit WindowPeer(Window& model);

  /// Null when the model has gone.
  Window* Model() const { return model_; }
  /// Shows the window's properties as they are now.
  void Update();
  /// Shows one of its controls as it is now.
  void UpdateControl(const Control& control);
  /// Null if the control isn't of this window.
  ControlPeer* PeerOf(const Control& control) const;

  /// `over` may be null: the window above which it appears.
  void Appear(QWidget* over);
  void Disappear();
  /// True once for each time that it appears.
  bool TakeFirstPaint() { return std::exchange(isNew_, false); }
  /// Appears above all others, which take no input, and returns when it has been hidden.
  void RunModal(QWidget* over);
  /// The model is about to go: hides, and refers to it no more.
  void Forget();

  void PressDefault() override;
  void PressCancel() override;
  void reject() override {}

 protected:
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void UpdateSize();
  void UpdatePosition();
  void UpdateDefaultButton();
  void SetTabOrder();
  void Press(const PushButton* button) const;

  Window* model_;
  std::vector<std::unique_ptr<ControlPeer>> peers_;
  std::map<const Control*, ControlPeer*> peersByControl_;
  std::vector<QWidget*> tabOrder_;
  QImage backdrop_;
  QPoint position_;     ///< Where the program has last put it.
  bool isNew_ = false;  ///< It appeared, and nothing waited for it to be on the display.
  std::vector<QEventLoop*> modalLoops_;
};

}  // namespace zephin

#endif  // PLATFORM_QT_WINDOW_PEER_H_
