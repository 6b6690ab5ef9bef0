#include <QProgressBar>
#include <algorithm>
#include <limits>

#include "platform/framework/controls.h"
#include "platform/framework/window.h"
#include "platform/qt/peers/control_peer.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/picture_widget.h"

namespace zephin {
namespace {

class CanvasPeer final : public ControlPeer {
 public:
  CanvasPeer(Canvas& model, PictureWidget* picture)
      : ControlPeer(model, picture), model_(model), picture_(picture) {
    // The model doesn't say what the picture shows.
    picture->setAccessibleName(QStringLiteral("Picture"));
  }

 protected:
  void Apply() override { picture_->SetImage(ImageOf(model_.Backdrop(), picture_->size())); }

 private:
  Canvas& model_;
  PictureWidget* picture_;
};

/// The direction of the language in which the window is written, as the captions of its buttons
/// show.
Qt::LayoutDirection DirectionOf(const Window& window) {
  for (const Ref<Control>& control : window.Controls()) {
    const auto* button = dynamic_cast<const PushButton*>(&*control);
    if (button != nullptr && ToQString(button->Caption()).isRightToLeft()) {
      return Qt::RightToLeft;
    }
  }
  return Qt::LeftToRight;
}

class ProgressPeer final : public ControlPeer {
 public:
  ProgressPeer(ProgressBar& model, QProgressBar* bar)
      : ControlPeer(model, bar), model_(model), bar_(bar) {
    bar->setTextVisible(false);
    bar->setAccessibleName(QStringLiteral("Progress"));
  }

 protected:
  void Apply() override {
    // The toolkit's bar counts in 32 bits, and a maximum of 0 makes it a bar without an end.
    std::int64_t maximum = std::max<std::int64_t>(model_.Maximum(), 1);
    std::int64_t value =
        model_.Maximum() > 0 ? std::clamp<std::int64_t>(model_.Value(), 0, maximum) : 0;
    // Halving keeps the share, to far more steps than the bar has pixels.
    while (maximum > std::numeric_limits<int>::max()) {
      maximum /= 2;
      value /= 2;
    }
    bar_->setLayoutDirection(DirectionOf(*model_.Owner()));
    bar_->setRange(0, static_cast<int>(maximum));
    bar_->setValue(static_cast<int>(value));
  }

 private:
  ProgressBar& model_;
  QProgressBar* bar_;
};

}  // namespace

std::unique_ptr<ControlPeer> MakeDisplayPeer(Control& control, QWidget& window) {
  if (auto* canvas = dynamic_cast<Canvas*>(&control)) {
    return std::make_unique<CanvasPeer>(*canvas, new PictureWidget(&window));
  }
  if (auto* bar = dynamic_cast<ProgressBar*>(&control)) {
    return std::make_unique<ProgressPeer>(*bar, new QProgressBar(&window));
  }
  return nullptr;
}

}  // namespace zephin
