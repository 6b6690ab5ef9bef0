#ifndef PLATFORM_FRAMEWORK_CONTROLS_H_
#define PLATFORM_FRAMEWORK_CONTROLS_H_

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "platform/framework/picture.h"
#include "platform/framework/ref.h"
#include "platform/framework/string.h"

// The kinds of controls. Each is a model: properties with a getter and a setter, and handlers that
// the desktop calls through `Application::CallHandler`. The desktop writes what the user changes
// (a text, a value) with the same setters. Captions and texts are shown letter for letter: "&" and
// "<" have no special meaning.

namespace zephin {

class FolderItem;
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

/// A push button.
class PushButton : public Control {
 public:
  using Control::Control;
  const String& Caption() const { return caption_; }
  void SetCaption(String caption) { Set(caption_, std::move(caption)); }
  /// The default button of the window: Return presses it while no other push button has the focus.
  bool Default() const { return default_; }
  void SetDefault(bool isDefault) { Set(default_, isDefault); }
  /// The cancel button of the window: Escape presses it unless it is hidden or disabled.
  bool Cancel() const { return cancel_; }
  void SetCancel(bool cancel) { Set(cancel_, cancel); }

  /// Called when the user presses the button. May be empty.
  std::function<void(PushButton&)> Action;

 private:
  String caption_;
  bool default_ = false;
  bool cancel_ = false;
};

enum class TextAlign { Left = 0, Center = 1, Right = 2 };

/// Text that the user cannot edit.
class Label : public Control {
 public:
  using Control::Control;
  const String& Text() const { return text_; }
  void SetText(String text) { Set(text_, std::move(text)); }
  TextAlign Alignment() const { return align_; }
  void SetAlignment(TextAlign align) { Set(align_, align); }
  /// True: several lines, wrapped at words. False: one line.
  bool Multiline() const { return multiline_; }
  void SetMultiline(bool multiline) { Set(multiline_, multiline); }
  bool Underline() const { return underline_; }
  void SetUnderline(bool underline) { Set(underline_, underline); }
  /// As 0xRRGGBB.
  std::uint32_t TextColor() const { return textColor_; }
  void SetTextColor(std::uint32_t color) { Set(textColor_, color); }
  /// In points; 0: the system's font size.
  int FontSize() const { return fontSize_; }
  void SetFontSize(int size) { Set(fontSize_, size); }

  /// A label with this handler is a link. It is called when a mouse button is pressed on the label,
  /// with the position in points from the label's top left corner, and with (0, 0) when the link is
  /// activated by keyboard or screen reader. The result is ignored. May be empty.
  std::function<bool(Label&, int x, int y)> MouseDown;

 private:
  String text_;
  TextAlign align_ = TextAlign::Left;
  bool multiline_ = false;
  bool underline_ = false;
  std::uint32_t textColor_ = 0x000000;
  int fontSize_ = 0;
};

/// An input field for one line of text.
class TextField : public Control {
 public:
  using Control::Control;
  const String& Text() const { return text_; }
  void SetText(String text) { Set(text_, std::move(text)); }
  /// Shown dimmed while the field is empty.
  const String& Hint() const { return hint_; }
  void SetHint(String hint) { Set(hint_, std::move(hint)); }
  /// Whether the input is masked. It is off in all fields of this program.
  bool Password() const { return password_; }
  void SetPassword(bool password) { Set(password_, password); }

 private:
  String text_;
  String hint_;
  bool password_ = false;
};

/// An input field for several lines of plain text, wrapped at words, with a vertical scroll bar.
class TextArea : public Control {
 public:
  using Control::Control;
  const String& Text() const { return text_; }
  void SetText(String text) { Set(text_, std::move(text)); }
  /// The user can select and copy the text but not change it.
  bool ReadOnly() const { return readOnly_; }
  void SetReadOnly(bool readOnly) { Set(readOnly_, readOnly); }

 private:
  String text_;
  bool readOnly_ = false;
};

/// A progress bar from 0 to Maximum.
class ProgressBar : public Control {
 public:
  using Control::Control;
  /// Shown as 0 below 0 and as full above Maximum.
  std::int64_t Value() const { return value_; }
  void SetValue(std::int64_t value) { Set(value_, value); }
  std::int64_t Maximum() const { return maximum_; }
  void SetMaximum(std::int64_t maximum) { Set(maximum_, maximum); }

 private:
  std::int64_t value_ = 0;
  std::int64_t maximum_ = 100;
};

/// Shows a picture at its original size, from its top left corner, clipped to the control.
class Canvas : public Control {
 public:
  using Control::Control;
  /// Nil: nothing is drawn.
  const Ref<Picture>& Backdrop() const { return backdrop_; }
  void SetBackdrop(Ref<Picture> picture) { Set(backdrop_, std::move(picture)); }

 private:
  Ref<Picture> backdrop_;
};

/// A radio button. All radio buttons of a window are one group.
class RadioButton : public Control {
 public:
  using Control::Control;
  const String& Caption() const { return caption_; }
  void SetCaption(String caption) { Set(caption_, std::move(caption)); }
  bool Value() const { return value_; }
  /// True clears the other radio buttons of the window.
  void SetValue(bool value);

 private:
  String caption_;
  bool value_ = false;
};

/// A check box with two states.
class CheckBox : public Control {
 public:
  using Control::Control;
  const String& Caption() const { return caption_; }
  void SetCaption(String caption) { Set(caption_, std::move(caption)); }
  bool Value() const { return value_; }
  void SetValue(bool value) { Set(value_, value); }

 private:
  String caption_;
  bool value_ = false;
};

/// Shows a web page. It loads nothing from the network; the desktop opens a link that the user
/// clicks in the browser.
class HTMLViewer : public Control {
 public:
  using Control::Control;
  /// Shows this HTML source. The second argument would be the base of relative addresses; it is
  /// ignored, since a page loads no files.
  void LoadPage(String source, const Ref<FolderItem>& /*base*/) { Set(source_, std::move(source)); }
  const String& Source() const { return source_; }

 private:
  String source_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_CONTROLS_H_
