#ifndef PLATFORM_FRAMEWORK_WINDOW_H_
#define PLATFORM_FRAMEWORK_WINDOW_H_

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/framework/control.h"
#include "platform/framework/menu.h"
#include "platform/framework/picture.h"
#include "platform/framework/string.h"

namespace zephin {

/// The frame of a window.
enum class WindowType { Document = 0, MovableModal = 1 };

/// A window as a model: its properties and controls. A class of windows sets the former in `Layout`
/// and makes the latter in `CreateControls`; both run in `Open`, which is called once for each new
/// window before it is used (see MakeWindow).
class Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window();

  /// Runs Layout and CreateControls, shows the window if `Visible` says so, and runs Event_Open.
  void Open();

  const String& Title() const { return title_; }
  void SetTitle(String title) { Set(title_, std::move(title)); }
  int Width() const { return width_; }
  void SetWidth(int width) { Resize(width, height_); }
  int Height() const { return height_; }
  void SetHeight(int height) { Resize(width_, height); }
  int MinimumWidth() const { return minimumWidth_; }
  int MinimumHeight() const { return minimumHeight_; }
  int MaximumWidth() const { return maximumWidth_; }
  int MaximumHeight() const { return maximumHeight_; }
  void SetMinimumSize(int width, int height);
  void SetMaximumSize(int width, int height);
  WindowType Type() const { return type_; }
  void SetType(WindowType type) { Set(type_, type); }
  bool Resizeable() const { return resizeable_; }
  void SetResizeable(bool resizeable) { Set(resizeable_, resizeable); }
  /// None of this program's windows has a close, minimise, maximise or full-screen button, so that
  /// the window manager can't close them either. See `ClosesAsQuit` for the one exception.
  bool HasCloseButton() const { return false; }
  /// Whether a request of the window manager to close it is the Quit menu item (the main window).
  bool ClosesAsQuit() const { return closesAsQuit_; }
  void SetClosesAsQuit(bool closes) { Set(closesAsQuit_, closes); }
  /// Placement code of the platform: 0 and 1 the default place, 4 the centre of the screen.
  int DefaultLocation() const { return defaultLocation_; }
  void SetDefaultLocation(int code) { Set(defaultLocation_, code); }
  /// Where the program has put it on the screen; only if it has been moved there.
  bool HasPosition() const { return hasPosition_; }
  int Left() const { return left_; }
  int Top() const { return top_; }
  void SetPosition(int left, int top);
  /// Whether `BackgroundColor` (0xRRGGBB) is drawn instead of the platform's colour for windows.
  bool HasBackgroundColor() const { return hasBackgroundColor_; }
  std::uint32_t BackgroundColor() const { return backgroundColor_; }
  void SetBackgroundColor(std::uint32_t color);
  /// Drawn behind the controls from the top left corner; nil: none.
  const Ref<Picture>& Backdrop() const { return backdrop_; }
  void SetBackdrop(Ref<Picture> picture) { Set(backdrop_, std::move(picture)); }
  const Ref<MenuBar>& Menus() const { return menuBar_; }
  void SetMenuBar(Ref<MenuBar> menuBar) { Set(menuBar_, std::move(menuBar)); }
  /// Has no effect: no window shows its menus (see MenuBar).
  void SetMenuBarVisible(bool /*visible*/) {}

  bool Visible() const { return visible_; }
  /// Shows or hides it. Set in `Layout`, it has the window shown as soon as its controls are made;
  /// a window that is only run modally leaves it out.
  void SetVisible(bool visible);
  void Show() { SetVisible(true); }
  void Hide() { SetVisible(false); }
  /// Shows it modally and returns when it has been hidden.
  void ShowModal();
  /// Repaints it; true: before the call returns.
  void Refresh(bool now);
  void SetFocus();

  const std::vector<Ref<Control>>& Controls() const { return controls_; }
  /// Nil if there is none of that name (and, in a control array, index).
  Ref<Control> ControlByName(std::string_view name, int index = Control::kNoIndex) const;

  /// The user's or the desktop's new size: moves the controls by their locked edges. Sizes set by
  /// the program (`SetWidth`, `SetHeight`) move none.
  void ResizedByUser(int width, int height);

  virtual void Event_Open() {}
  /// True refuses the close.
  virtual bool Event_CancelClose(bool appQuitting);

 protected:
  virtual void Layout() = 0;
  virtual void CreateControls() = 0;

  /// Adds a new control of that name and place, and gives it.
  template <class T>
  Ref<T> Add(const char* name, const Bounds& place, int index = Control::kNoIndex) {
    Ref<T> control = MakeRef<T>(name, index);
    control->SetPlace(place);
    AddControl(control);
    return control;
  }
  void AddControl(const Ref<Control>& control);

  /// The control of that name, nil if there is none or it is of another class.
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

/// A new window, opened.
template <class T, class... Args>
Ref<T> MakeWindow(Args&&... args) {
  Ref<T> window = MakeRef<T>(std::forward<Args>(args)...);
  window->Open();
  return window;
}

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_WINDOW_H_
