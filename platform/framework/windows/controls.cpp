#include "platform/framework/controls.h"

#include "platform/framework/application.h"
#include "platform/framework/window.h"

namespace zephin {

void Control::SetLeft(int left) {
  place_.left = left;
  Changed();
}

void Control::SetTop(int top) {
  place_.top = top;
  Changed();
}

void Control::SetWidth(int width) {
  place_.width = width;
  Changed();
}

void Control::SetHeight(int height) {
  place_.height = height;
  Changed();
}

void Control::Refresh(bool now) {
  Application::Current().Session().RefreshControl(*this, now ? Repaint::Now : Repaint::Later);
}

void Control::Changed() {
  // Before that nothing is shown, and `Open` shows the final state.
  if (owner_ != nullptr && owner_->opened_) {
    Application::Current().Session().ControlChanged(*this);
  }
}

void RadioButton::SetValue(bool value) {
  if (value && Owner() != nullptr) {
    for (const Ref<Control>& other : Owner()->Controls()) {
      const Ref<RadioButton> radio = RefCast<RadioButton>(other);
      if (!radio.IsNil() && &*radio != this && radio->value_) {
        radio->Set(radio->value_, false);
      }
    }
  }
  Set(value_, value);
}

}  // namespace zephin
