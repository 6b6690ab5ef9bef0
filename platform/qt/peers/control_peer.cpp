#include "platform/qt/peers/control_peer.h"

#include <QHelpEvent>
#include <QToolTip>

#include "platform/qt/qt_string.h"

namespace zephin {

ControlPeer::ControlPeer(Control& control, QWidget* widget) : control_(control), widget_(widget) {
  widget_->installEventFilter(this);
}

void ControlPeer::Update() {
  const Bounds& place = control_.Place();
  widget_->setGeometry(place.left, place.top, place.width, place.height);
  widget_->setEnabled(control_.Enabled());
  // Not the tool tip, which has markup and may repeat the caption: a screen reader reads it out.
  widget_->setAccessibleDescription(ToQString(control_.HelpTag()));
  Apply();
  widget_->setVisible(control_.Visible());
}

QString ControlPeer::Tip() const {
  return control_.HelpTag().IsEmpty() ? WholeText() : ToQString(control_.HelpTag());
}

bool ControlPeer::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ToolTip || watched != widget_) {
    return false;
  }
  const QString tip = Tip();
  if (tip.isEmpty()) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), AsToolTip(tip), widget_);
  }
  return true;
}

std::unique_ptr<ControlPeer> MakePeer(Control& control, QWidget& window) {
  for (const auto make : {MakeButtonPeer, MakeLabelPeer, MakeDisplayPeer, MakeChoicePeer,
                          MakeFieldPeer, MakePagePeer}) {
    if (std::unique_ptr<ControlPeer> peer = make(control, window)) {
      return peer;
    }
  }
  return nullptr;
}

}  // namespace zephin
