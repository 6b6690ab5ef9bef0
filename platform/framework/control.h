#ifndef PLATFORM_FRAMEWORK_CONTROL_H_
#define PLATFORM_FRAMEWORK_CONTROL_H_

#include <string>
#include <utility>

#include "platform/framework/ref.h"
#include "platform/framework/string.h"

namespace zephin {

class Window;

/// A rectangle in points, relative to the top left corner of a window's content.
struct Bounds {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

/// The window edges to which a control's own edges keep their distance when the user resizes the
/// window. A control that is locked to both sides grows with the window.
struct Locks {
  bool left = false;
  bool top = false;
  bool right = false;
  bool bottom = false;
};

/// Base of everything that a window contains: a name, a place, and the properties that all controls
/// have. It is a model without any drawing. Once the control belongs to an open window, each setter
/// reports the change to the desktop, even if the new value equals the old one.
class Control {
 public:
  /// `index` is given for the members of a control array only.
  explicit Control(std::string name, int index = kNoIndex)
      : name_(std::move(name)), index_(index) {}
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  static constexpr int kNoIndex = -1;

  /// Name within the window. The members of a control array have the same name and differ in their
  /// index.
  const std::string& Name() const { return name_; }
  int Index() const { return index_; }
  /// The window; null before the control is added to one and after the window is destroyed.
  Window* Owner() const { return owner_; }

  const Bounds& Place() const { return place_; }
  void SetPlace(const Bounds& place) { Set(place_, place); }
  // The parts of the place, one by one, in points.
  int Left() const { return place_.left; }
  int Top() const { return place_.top; }
  int Width() const { return place_.width; }
  int Height() const { return place_.height; }
  void SetLeft(int left);
  void SetTop(int top);
  void SetWidth(int width);
  void SetHeight(int height);
  const Locks& LockedEdges() const { return locks_; }
  void SetLockedEdges(const Locks& locks) { Set(locks_, locks); }

  /// A hidden control is neither drawn nor reached by mouse or keyboard.
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Set(visible_, visible); }
  /// A disabled control is drawn dimmed and takes no input.
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Set(enabled_, enabled); }
  /// Text of the tool tip; empty: none.
  const String& HelpTag() const { return helpTag_; }
  void SetHelpTag(String tag) { Set(helpTag_, std::move(tag)); }
  /// Position in the order of the Tab key; -1: the control never gets the focus.
  int TabIndex() const { return tabIndex_; }
  void SetTabIndex(int index) { Set(tabIndex_, index); }

  /// Repaints the control: before the call returns if `now`, else with the next events.
  void Refresh(bool now);

 protected:
  /// Sets a property of this class or a derived one and reports the change.
  template <class T>
  void Set(T& property, T value) {
    property = std::move(value);
    Changed();
  }
  void Changed();

 private:
  friend class Window;

  std::string name_;
  int index_;
  Window* owner_ = nullptr;
  Bounds place_;
  Locks locks_;
  bool visible_ = true;
  bool enabled_ = true;
  String helpTag_;
  int tabIndex_ = -1;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_CONTROL_H_
