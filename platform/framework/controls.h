#ifndef PLATFORM_FRAMEWORK_CONTROLS_H_
#define PLATFORM_FRAMEWORK_CONTROLS_H_

#include <cstdint>
#include <functional>
#include <utility>

#include "platform/framework/control.h"
#include "platform/framework/folder_item.h"
#include "platform/framework/picture.h"

// The kinds of controls. Each is a model: properties with a getter and a setter, and handlers that
// the desktop calls through `Application::CallHandler`. The desktop writes what the user changes
// (a text, a value) with the same setters. Captions and texts are shown letter for letter: "&" and
// "<" have no special meaning.

namespace zephin {

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
