#ifndef PLATFORM_FRAMEWORK_WINDOW_H_
#define PLATFORM_FRAMEWORK_WINDOW_H_

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/framework/controls.h"
#include "platform/framework/menu.h"
#include "platform/framework/picture.h"
#include "platform/framework/string.h"

namespace zephin {

/// The kind of window frame. The values are those of the setups' platform.
enum class WindowType { Document = 0, MovableModal = 1 };

/// A window as a model: its properties and controls, without any drawing. A derived class sets the
/// properties in `Layout` and adds the controls in `CreateControls`; `Open` calls both once, before
/// the window is used (see MakeWindow). Like a control, an open window reports each change to the
/// desktop. Its few virtual functions are the ones that derived windows override; all others are
/// fixed.
class Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window();

  /// Calls Layout and CreateControls, shows the window if `Visible` is set, calls Event_Open.
  void Open();

  // Properties. Sizes are those of the content, in points.
  const String& Title() const { return title_; }
  void SetTitle(String title) { Set(title_, std::move(title)); }
  int Width() const { return width_; }
  void SetWidth(int width) { Resize(width, height_); }
  int Height() const { return height_; }
  void SetHeight(int height) { Resize(width_, height); }
  // Limits for resizing by the user.
  int MinimumWidth() const { return minimumWidth_; }
  int MinimumHeight() const { return minimumHeight_; }
  int MaximumWidth() const { return maximumWidth_; }
  int MaximumHeight() const { return maximumHeight_; }
  void SetMinimumSize(int width, int height);
  void SetMaximumSize(int width, int height);
  /// Kept, but has no effect: the desktop draws one frame for all windows.
  WindowType Type() const { return type_; }
  void SetType(WindowType type) { Set(type_, type); }
  /// Whether the user can resize the window.
  bool Resizeable() const { return resizeable_; }
  void SetResizeable(bool resizeable) { Set(resizeable_, resizeable); }
  /// No window of this program has buttons to close, minimise, maximise or fill the screen. The
  /// window manager cannot close them either, except for the one that `ClosesAsQuit` names.
  bool HasCloseButton() const { return false; }
  /// Whether a request of the window manager to close the window acts as the menu item Quit. True
  /// for the main window only.
  bool ClosesAsQuit() const { return closesAsQuit_; }
  void SetClosesAsQuit(bool closes) { Set(closesAsQuit_, closes); }
  /// Where the desktop places the window: 0 and 1 leave it to the desktop, 4 is the centre of the
  /// screen.
  int DefaultLocation() const { return defaultLocation_; }
  void SetDefaultLocation(int code) { Set(defaultLocation_, code); }
  /// Position on the screen, in points. It counts once SetPosition has been called.
  bool HasPosition() const { return hasPosition_; }
  int Left() const { return left_; }
  int Top() const { return top_; }
  void SetPosition(int left, int top);
  /// Whether `BackgroundColor` (0xRRGGBB) replaces the desktop's colour for windows.
  bool HasBackgroundColor() const { return hasBackgroundColor_; }
  std::uint32_t BackgroundColor() const { return backgroundColor_; }
  void SetBackgroundColor(std::uint32_t color);
  /// Picture behind the controls, drawn from the top left corner; nil: none.
  const Ref<Picture>& Backdrop() const { return backdrop_; }
  void SetBackdrop(Ref<Picture> picture) { Set(backdrop_, std::move(picture)); }
  /// Kept, but has no effect: the desktop uses the shortcuts of the application's menu bar.
  const Ref<MenuBar>& Menus() const { return menuBar_; }
  void SetMenuBar(Ref<MenuBar> menuBar) { Set(menuBar_, std::move(menuBar)); }
  /// Has no effect: no window shows its menus.
  void SetMenuBarVisible(bool /*visible*/) {}

  bool Visible() const { return visible_; }
  /// Shows or hides the window. If set to true in `Layout`, `Open` shows the window; a window that
  /// is only shown by `ShowModal` leaves it unset.
  void SetVisible(bool visible);
  void Show() { SetVisible(true); }
  void Hide() { SetVisible(false); }
  /// Shows the window modally and returns when it has been hidden.
  void ShowModal();
  /// Repaints the window: before the call returns if `now`, else with the next events.
  void Refresh(bool now);
  /// Gives the window the keyboard focus.
  void SetFocus();

  /// All controls in the order in which they were added.
  const std::vector<Ref<Control>>& Controls() const { return controls_; }
  /// The control with this name (and index, in a control array); nil if there is none.
  Ref<Control> ControlByName(std::string_view name, int index = Control::kNoIndex) const;

  /// Called by the desktop when the user has resized the window: moves the controls by their locked
  /// edges. `SetWidth` and `SetHeight` move no controls.
  void ResizedByUser(int width, int height);

  /// Called at the end of `Open`.
  virtual void Event_Open() {}
  /// Called before the window is closed, or before the program quits if `appQuitting`. True
  /// refuses.
  virtual bool Event_CancelClose(bool appQuitting);

 protected:
  virtual void Layout() = 0;
  virtual void CreateControls() = 0;

  /// Adds a new control with this name and place and returns it.
  template <class T>
  Ref<T> Add(const char* name, const Bounds& place, int index = Control::kNoIndex) {
    Ref<T> control = MakeRef<T>(name, index);
    control->SetPlace(place);
    AddControl(control);
    return control;
  }
  void AddControl(const Ref<Control>& control);

  /// The control with this name; nil if there is none or it is of another class.
  template <class T>
  Ref<T> Named(std::string_view name, int index = Control::kNoIndex) const {
    return RefCast<T>(ControlByName(name, index));
  }

 private:
  friend class Control;

  template <class T>
  void Set(T& property, T value) {
    property = std::move(value);
    Changed();
  }
  void Changed();
  void Resize(int width, int height);

  String title_;
  int width_ = 0;
  int height_ = 0;
  int minimumWidth_ = 64;
  int minimumHeight_ = 64;
  int maximumWidth_ = 32000;
  int maximumHeight_ = 32000;
  WindowType type_ = WindowType::MovableModal;
  bool resizeable_ = false;
  bool closesAsQuit_ = false;
  int defaultLocation_ = 0;
  bool hasPosition_ = false;
  int left_ = 0;
  int top_ = 0;
  bool hasBackgroundColor_ = false;
  std::uint32_t backgroundColor_ = 0xFFFFFF;
  Ref<Picture> backdrop_;
  Ref<MenuBar> menuBar_;
  bool visible_ = false;
  bool opened_ = false;
  std::vector<Ref<Control>> controls_;
};

/// A new window, already open. The arguments are those of T's constructor.
template <class T, class... Args>
Ref<T> MakeWindow(Args&&... args) {
  Ref<T> window = MakeRef<T>(std::forward<Args>(args)...);
  window->Open();
  return window;
}

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_WINDOW_H_
