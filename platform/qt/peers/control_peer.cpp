#include "platform/qt/peers/control_peer.h"

#include <QHelpEvent>
#include <QToolTip>
#include <cmath>

#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/fitted_text.h"

namespace zephin {
namespace {

/// In points. Longer lines are hard to read.
constexpr int kWidestTip = 400;

int WidthOfTip(const QString& tip) {
  return static_cast<int>(std::ceil(SizeOfText(tip, QToolTip::font(), kWidestTip).width())) + 1;
}

}  // namespace

ControlPeer::ControlPeer(Control& control, QWidget* widget) : control_(control), widget_(widget) {
  widget_->installEventFilter(this);
}

void ControlPeer::Update() {
  const Bounds& place = control_.Place();
  widget_->setGeometry(place.left, place.top, place.width, place.height);
  // The toolkit would pass the focus on to the next button, and Return would press that.
  const bool isUsable = control_.Visible() && control_.Enabled();
  if (!isUsable && widget_->window()->focusWidget() == widget_) {
    widget_->window()->setFocus();
  }
  widget_->setEnabled(control_.Enabled());
  // Not the tool tip, which has markup and may repeat the caption: a screen reader reads it out.
  const QString description = ToQString(control_.HelpTag());
  if (description != widget_->accessibleDescription()) {
    widget_->setAccessibleDescription(description);
  }
  // `Visible` comes last, so that nothing is drawn in its old state.
  Apply();
  widget_->setVisible(control_.Visible());
}

QString ControlPeer::Tip() const {
  const QString whole = WholeText();
  const QString tag = ToQString(control_.HelpTag());
  return whole.isEmpty() || tag.isEmpty() ? whole + tag : whole + u'\n' + tag;
}

bool ControlPeer::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ToolTip || watched != widget_) {
    return false;
  }
  const QString tip = Tip();
  if (tip.isEmpty()) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       AsToolTip(tip, WidthOfTip(tip)), widget_);
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
