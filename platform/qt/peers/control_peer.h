#ifndef PLATFORM_QT_PEERS_CONTROL_PEER_H_
#define PLATFORM_QT_PEERS_CONTROL_PEER_H_

#include <QObject>
#include <QString>
#include <QWidget>
#include <memory>

#include "platform/framework/controls.h"

namespace zephin {

/// Shows one control of the model as a widget, and keeps the widget in step with it. What the user
/// does to the widget goes to the model's setters and handlers.
///
/// There is one subclass for each kind of control. They are private to the `*_peer.cpp` files,
/// which define the functions `Make...Peer` below; everything else is defined in
/// `control_peer.cpp`.
class ControlPeer : public QObject {
 public:
  /// Neither the control nor the widget is owned: the model's window owns the one, the widget's
  /// parent the other. Both must outlive the peer.
  ControlPeer(Control& control, QWidget* widget);

  QWidget& Widget() const { return *widget_; }
  const Control& Model() const { return control_; }
  /// Copies all properties of the control to the widget.
  void Update();
  /// True for a control that Tab reaches after all others although its tab index is -1.
  virtual bool ComesLastInTabOrder() const { return false; }

  /// Shows the tool tip. Subclasses may handle keys before the widget gets them.
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  /// Copies the properties that only this kind of control has. Place and `Enabled` are set before
  /// it is called, `Visible` after it.
  virtual void Apply() = 0;
  /// The whole text if the widget can't show all of it, else empty. The tool tip shows it above the
  /// control's help tag.
  virtual QString WholeText() const { return {}; }

 private:
  QString Tip() const;

  Control& control_;
  QWidget* widget_;
};

/// The peer for a control of any kind, with its widget as a child of `window`. The caller calls
/// `Update` before the widget is shown. Null for a kind of control that has no peer.
std::unique_ptr<ControlPeer> MakePeer(Control& control, QWidget& window);

// The same for one family of controls. Null if the control doesn't belong to the family.
std::unique_ptr<ControlPeer> MakeButtonPeer(Control& control, QWidget& window);
std::unique_ptr<ControlPeer> MakeChoicePeer(Control& control, QWidget& window);
std::unique_ptr<ControlPeer> MakeLabelPeer(Control& control, QWidget& window);
std::unique_ptr<ControlPeer> MakeFieldPeer(Control& control, QWidget& window);
std::unique_ptr<ControlPeer> MakePagePeer(Control& control, QWidget& window);
std::unique_ptr<ControlPeer> MakeDisplayPeer(Control& control, QWidget& window);

}  // namespace zephin

#endif  // PLATFORM_QT_PEERS_CONTROL_PEER_H_
