#include "platform/framework/window.h"

#include <algorithm>

#include "platform/framework/application.h"

namespace zephin {

Window::~Window() {
  // Other handles may keep the controls alive.
  for (const Ref<Control>& control : controls_) {
    control->owner_ = nullptr;
  }
  if (opened_) {
    Application::Current().Session().ForgetWindow(*this);
  }
}

void Window::Open() {
  Layout();
  CreateControls();
  // From here on each change is reported: before, there is nothing on the screen to update.
  opened_ = true;
  if (visible_) {
    Application::Current().Session().ShowWindow(*this);
  }
  Event_Open();
}

void Window::SetMinimumSize(int width, int height) {
  minimumWidth_ = width;
  minimumHeight_ = height;
  Changed();
}

void Window::SetMaximumSize(int width, int height) {
  maximumWidth_ = width;
  maximumHeight_ = height;
  Changed();
}

void Window::SetPosition(int left, int top) {
  hasPosition_ = true;
  left_ = left;
  top_ = top;
  Changed();
}

void Window::SetBackgroundColor(std::uint32_t color) {
  hasBackgroundColor_ = true;
  backgroundColor_ = color;
  Changed();
}

void Window::SetVisible(bool visible) {
  visible_ = visible;
  if (!opened_) {
    return;
  }
  if (visible) {
    Application::Current().Session().ShowWindow(*this);
  } else {
    Application::Current().Session().HideWindow(*this);
  }
}

void Window::ShowModal() {
  // The desktop shows the window itself; ShowWindow before it would let events run in between.
  visible_ = true;
  Application::Current().Session().RunModal(*this);
}

void Window::Refresh(bool now) {
  Application::Current().Session().RefreshWindow(*this, now ? Repaint::Now : Repaint::Later);
}

void Window::SetFocus() {
  Application::Current().Session().FocusWindow(*this);
}

Ref<Control> Window::ControlByName(std::string_view name, int index) const {
  // A window has some twenty controls at most.
  const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const auto& control) {
    return control->Name() == name && control->Index() == index;
  });
  return found == controls_.end() ? nullptr : *found;
}

void Window::ResizedByUser(int width, int height) {
  const int wider = width - width_;
  const int higher = height - height_;
  // Not by Resize: the desktop has reported this size itself.
  width_ = width;
  height_ = height;
  for (const Ref<Control>& control : controls_) {
    Bounds place = control->Place();
    const Locks& locks = control->LockedEdges();
    // Locked to both sides, a control grows; locked to the far side only, it moves.
    if (locks.right) {
      (locks.left ? place.width : place.left) += wider;
    }
    if (locks.bottom) {
      (locks.top ? place.height : place.top) += higher;
    }
    control->SetPlace(place);
  }
}

bool Window::Event_CancelClose(bool /*appQuitting*/) {
  return false;
}

void Window::AddControl(const Ref<Control>& control) {
  control->owner_ = this;
  controls_.push_back(control);
}

void Window::Changed() {
  if (opened_) {
    Application::Current().Session().WindowChanged(*this);
  }
}

void Window::Resize(int width, int height) {
  width_ = width;
  height_ = height;
  Changed();
}

}  // namespace zephin
