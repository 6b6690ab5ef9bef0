#include <QKeyEvent>

#include "platform/framework/application.h"
#include "platform/framework/controls.h"
#include "platform/qt/peers/control_peer.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/caption_buttons.h"

namespace zephin {
namespace {

class ButtonPeer final : public ControlPeer {
 public:
  ButtonPeer(PushButton& model, CaptionButton* button)
      : ControlPeer(model, button), model_(model), button_(button) {
    // Return is handled by KeyFilter, for all windows and before the toolkit sees it.
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

/// A radio button or a check box.
template <class Choice, class Button>
class ChoicePeer : public ControlPeer {
 public:
  ChoicePeer(Choice& model, Button* button)
      : ControlPeer(model, button), model_(model), button_(button) {
    // Not `clicked`: a screen reader toggles the button without a click.
    connect(button, &QAbstractButton::toggled, this, [this](bool checked) {
      // `Apply` sets the button, too, and the model would report the change back to it.
      if (checked != model_.Value()) {
        model_.SetValue(checked);
      }
    });
  }

 protected:
  void Apply() override {
    button_->SetCaption(ToQString(model_.Caption()));
    button_->setChecked(model_.Value());
  }
  QString WholeText() const override {
    return button_->IsWhole() ? QString() : ToQString(model_.Caption());
  }

 private:
  Choice& model_;
  Button* button_;
};

/// The model unchecks the other buttons of the group. The arrow keys move through the group, and
/// the Tab key reaches each button, since each has a tab index of its own.
class RadioPeer final : public ChoicePeer<RadioButton, RadioWidget> {
 public:
  RadioPeer(RadioButton& model, RadioWidget* button) : ChoicePeer(model, button) {
    button->setAutoExclusive(false);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::KeyPress) {
      switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
        case Qt::Key_Left:
          return Move(-1);
        case Qt::Key_Down:
        case Qt::Key_Right:
          return Move(1);
        default:
          break;
      }
    }
    return ChoicePeer::eventFilter(watched, event);
  }

 private:
  bool Move(qsizetype by) {
    QList<RadioWidget*> group;
    for (QObject* sibling : Widget().parentWidget()->children()) {
      auto* button = dynamic_cast<RadioWidget*>(sibling);
      if (button != nullptr && button->isVisible() && button->isEnabled()) {
        group.push_back(button);
      }
    }
    // At either end the focus stays: the next group of keys must not start at the other end.
    const qsizetype next = group.indexOf(dynamic_cast<RadioWidget*>(&Widget())) + by;
    if (next >= 0 && next < group.size()) {
      group[next]->setFocus(Qt::TabFocusReason);
      group[next]->setChecked(true);
    }
    return true;
  }
};

}  // namespace

std::unique_ptr<ControlPeer> MakeButtonPeer(Control& control, QWidget& window) {
  auto* model = dynamic_cast<PushButton*>(&control);
  if (model == nullptr) {
    return nullptr;
  }
  return std::make_unique<ButtonPeer>(*model, new CaptionButton(&window));
}

std::unique_ptr<ControlPeer> MakeChoicePeer(Control& control, QWidget& window) {
  if (auto* radio = dynamic_cast<RadioButton*>(&control)) {
    return std::make_unique<RadioPeer>(*radio, new RadioWidget(&window));
  }
  if (auto* box = dynamic_cast<CheckBox*>(&control)) {
    return std::make_unique<ChoicePeer<CheckBox, CheckWidget>>(*box, new CheckWidget(&window));
  }
  return nullptr;
}

}  // namespace zephin
