#include "platform/framework/application.h"
#include "platform/framework/controls.h"
#include "platform/qt/peers/control_peer.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/look.h"
#include "platform/qt/widgets/text_widget.h"

namespace zephin {
namespace {

Qt::Alignment AlignmentOf(TextAlign align) {
  switch (align) {
    case TextAlign::Center:
      return Qt::AlignHCenter;
    case TextAlign::Right:
      return Qt::AlignRight;
    case TextAlign::Left:
      break;
  }
  return Qt::AlignLeft;
}

class LabelPeer final : public ControlPeer {
 public:
  LabelPeer(Label& model, TextWidget* text) : ControlPeer(model, text), model_(model), text_(text) {
    // Set when the control is made; a label never becomes a link later.
    if (model.MouseDown) {
      text->SetPressed([this](QPoint place) { Press(place); });
    }
  }

  bool ComesLastInTabOrder() const override { return text_->IsLink() && model_.TabIndex() < 0; }

 protected:
  void Apply() override {
    FittedText::Style style{SystemFont(model_.FontSize()), AlignmentOf(model_.Alignment()),
                            model_.Multiline() ? FittedText::Lines::Many : FittedText::Lines::One};
    style.font.setUnderline(model_.Underline());
    text_->SetText(ToQString(model_.Text()), style, QColor::fromRgb(model_.TextColor()));
  }
  QString WholeText() const override { return text_->IsWhole() ? QString() : text_->Text(); }

 private:
  void Press(QPoint place) {
    Application::Current().CallHandler(
        [this, place] { model_.MouseDown(model_, place.x(), place.y()); });
  }

  Label& model_;
  TextWidget* text_;
};

}  // namespace

std::unique_ptr<ControlPeer> MakeLabelPeer(Control& control, QWidget& window) {
  auto* model = dynamic_cast<Label*>(&control);
  if (model == nullptr) {
    return nullptr;
  }
  return std::make_unique<LabelPeer>(*model, new TextWidget(&window));
}

}  // namespace zephin
