#ifndef PLATFORM_QT_CONTROL_PEER_H_
#define PLATFORM_QT_CONTROL_PEER_H_

#include <QObject>
#include <QWidget>
#include <functional>
#include <memory>

#include "platform/framework/control.h"

namespace zephin {

/// What shows one control of the model: a widget, kept in step. What the user does to the widget
/// goes to the model's setters and handlers.
class ControlPeer : public QObject {
 public:
  /// The widget belongs to its parent, the window's.
  ControlPeer(Control& control, QWidget* widget);

  QWidget& Widget() const { return *widget_; }
  const Control& Model() const { return control_; }
  /// Shows the control as it is now.
  void Update();
  /// Whether the Tab key comes to it although it has no place in the order: after all others.
  virtual bool ComesLastInTabOrder() const { return false; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  /// Shows what this kind of control has of its own. Place, visibility and enabling are done.
  virtual void Apply() = 0;
  /// The whole text of the control where it can't be read on it, shown as the tool tip if the
  /// control has no help tag; else empty.
  virtual QString WholeText() const { return {}; }

 private:
  QString Tip() const;

  Control& control_;
  QWidget* widget_;
};

/// The peer for a control, with its widget made in `window`. Not yet updated.
std::unique_ptr<ControlPeer> MakePeer(Control& control, QWidget& window);

// One for each family of controls; null if the control isn't of it.
std::unique_ptr<ControlPeer> MakeButtonPeer(Control& control, QWidget& window);
std::unique_ptr<ControlPeer> MakeChoicePeer(Control& control, QWidget& window);
std::unique_ptr<ControlPeer> MakeLabelPeer(Control& control, QWidget& window);
std::unique_ptr<ControlPeer> MakeFieldPeer(Control& control, QWidget& window);
std::unique_ptr<ControlPeer> MakePagePeer(Control& control, QWidget& window);
std::unique_ptr<ControlPeer> MakeDisplayPeer(Control& control, QWidget& window);

}  // namespace zephin

#endif  // PLATFORM_QT_CONTROL_PEER_H_
