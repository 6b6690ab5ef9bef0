#ifndef PLATFORM_FRAMEWORK_CONTROL_H_
#define PLATFORM_FRAMEWORK_CONTROL_H_

#include <string>
#include <utility>

#include "platform/framework/ref.h"
#include "platform/framework/string.h"

namespace zephin {

class Window;
enum class Repaint;

/// A rectangle in points from the top left corner of a window's content.
struct Bounds {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

/// The edges of the window with which a control's own edges move when the window is resized.
/// Locked to both sides, it grows.
struct Locks {
  bool left = false;
  bool top = false;
  bool right = false;
  bool bottom = false;
};

/// Base of what stands in a window: a name, a place, and the properties that all have. Each setter
/// tells the desktop of the change once the control belongs to a window.
class Control {
 public:
  explicit Control(std::string name, int index = kNoIndex)
      : name_(std::move(name)), index_(index) {}
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  static constexpr int kNoIndex = -1;

  /// Name in the window; the members of a control array share theirs and differ by index.
  const std::string& Name() const { return name_; }
  int Index() const { return index_; }
  /// Null before the control is added to one.
  Window* Owner() const { return owner_; }

  const Bounds& Place() const { return place_; }
  void SetPlace(const Bounds& place) { Set(place_, place); }
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

  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Set(visible_, visible); }
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Set(enabled_, enabled); }
  /// Shown when the pointer rests on the control; empty: none.
  const String& HelpTag() const { return helpTag_; }
  void SetHelpTag(String tag) { Set(helpTag_, std::move(tag)); }
  /// Place in the order of the Tab key; -1 for a control that never has the focus.
  int TabIndex() const { return tabIndex_; }
  void SetTabIndex(int index) { Set(tabIndex_, index); }

  /// Repaints; true: before the call returns.
  void Refresh(bool now);

 protected:
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
