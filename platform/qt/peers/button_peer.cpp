#include "platform/framework/application.h"
#include "platform/framework/controls.h"
#include "platform/qt/peers/control_peer.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/widgets.h"

namespace zephin {
namespace {

class ButtonPeer final : public ControlPeer {
 public:
  ButtonPeer(PushButton& model, CaptionButton* button)
      : ControlPeer(model, button), model_(model), button_(button) {
    // Return is the default button's, whatever has the focus.
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this] { Press(); });
  }

 protected:
  void Apply() override { button_->SetCaption(ToQString(model_.Caption())); }
  QString WholeText() const override {
    return button_->IsWhole() ? QString() : ToQString(model_.Caption());
  }

 private:
  void Press() {
    if (model_.Action) {
      Application::Current().CallHandler([this] { model_.Action(model_); });
    }
  }

  PushButton& model_;
  CaptionButton* button_;
};

}  // namespace

std::unique_ptr<ControlPeer> MakeButtonPeer(Control& control, QWidget& window) {
  auto* model = dynamic_cast<PushButton*>(&control);
  if (model == nullptr) {
    return nullptr;
  }
  return std::make_unique<ButtonPeer>(*model, new CaptionButton(&window));
}

}  // namespace zephin
