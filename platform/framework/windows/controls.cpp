#include "platform/framework/controls.h"

#include "platform/framework/window.h"

namespace zephin {

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
