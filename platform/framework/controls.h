#ifndef PLATFORM_FRAMEWORK_CONTROLS_H_
#define PLATFORM_FRAMEWORK_CONTROLS_H_

#include <cstdint>
#include <functional>
#include <utility>

#include "platform/framework/control.h"
#include "platform/framework/folder_item.h"
#include "platform/framework/picture.h"

namespace zephin {

/// A button that is pressed.
class PushButton : public Control {
 public:
  using Control::Control;
  const String& Caption() const { return caption_; }
  void SetCaption(String caption) { Set(caption_, std::move(caption)); }
  /// Return presses it from anywhere in the window.
  bool Default() const { return default_; }
  void SetDefault(bool isDefault) { Set(default_, isDefault); }
  /// Escape presses it, unless it is hidden.
  bool Cancel() const { return cancel_; }
  void SetCancel(bool cancel) { Set(cancel_, cancel); }

  /// Called when the user presses it; may be empty.
  std::function<void(PushButton&)> Action;

 private:
  String caption_;
  bool default_ = false;
  bool cancel_ = false;
};

enum class TextAlign { Left = 0, Center = 1, Right = 2 };

/// A text that can't be edited.
class Label : public Control {
 public:
  using Control::Control;
  const String& Text() const { return text_; }
  void SetText(String text) { Set(text_, std::move(text)); }
  TextAlign Alignment() const { return align_; }
  void SetAlignment(TextAlign align) { Set(align_, align); }
  /// Several lines, broken at words; else one.
  bool Multiline() const { return multiline_; }
  void SetMultiline(bool multiline) { Set(multiline_, multiline); }
  bool Underline() const { return underline_; }
  void SetUnderline(bool underline) { Set(underline_, underline); }
  /// 0xRRGGBB.
  std::uint32_t TextColor() const { return textColor_; }
  void SetTextColor(std::uint32_t color) { Set(textColor_, color); }
  /// In points; 0 is the system's size.
  int FontSize() const { return fontSize_; }
  void SetFontSize(int size) { Set(fontSize_, size); }

  /// Called when the mouse button goes down on it at (x, y) from its corner, or when a link's
  /// action is asked for by keyboard or screen reader (0, 0). A label that has it is a link. May be
  /// empty.
  std::function<bool(Label&, int x, int y)> MouseDown;

 private:
  String text_;
  TextAlign align_ = TextAlign::Left;
  bool multiline_ = false;
  bool underline_ = false;
  std::uint32_t textColor_ = 0x000000;
  int fontSize_ = 0;
};

/// A field for one line of text.
class TextField : public Control {
 public:
  using Control::Control;
  const String& Text() const { return text_; }
  void SetText(String text) { Set(text_, std::move(text)); }
  /// Shown while the field is empty.
  const String& Hint() const { return hint_; }
  void SetHint(String hint) { Set(hint_, std::move(hint)); }
  /// Whether what is typed is masked.
  bool Password() const { return password_; }
  void SetPassword(bool password) { Set(password_, password); }

 private:
  String text_;
  String hint_;
  bool password_ = false;
};

/// A field of several lines with a vertical scroll bar, plain text, broken at words.
class TextArea : public Control {
 public:
  using Control::Control;
  const String& Text() const { return text_; }
  void SetText(String text) { Set(text_, std::move(text)); }
  bool ReadOnly() const { return readOnly_; }
  void SetReadOnly(bool readOnly) { Set(readOnly_, readOnly); }

 private:
  String text_;
  bool readOnly_ = false;
};

/// A bar that fills from 0 to Maximum.
class ProgressBar : public Control {
 public:
  using Control::Control;
  std::int64_t Value() const { return value_; }
  void SetValue(std::int64_t value) { Set(value_, value); }
  std::int64_t Maximum() const { return maximum_; }
  void SetMaximum(std::int64_t maximum) { Set(maximum_, maximum); }

 private:
  std::int64_t value_ = 0;
  std::int64_t maximum_ = 100;
};

/// Shows a picture from its top left corner, clipped to its bounds.
class Canvas : public Control {
 public:
  using Control::Control;
  /// Nil: nothing is drawn.
  const Ref<Picture>& Backdrop() const { return backdrop_; }
  void SetBackdrop(Ref<Picture> picture) { Set(backdrop_, std::move(picture)); }

 private:
  Ref<Picture> backdrop_;
};

/// One of the window's radio buttons, which form one group: setting one clears the others.
class RadioButton : public Control {
 public:
  using Control::Control;
  const String& Caption() const { return caption_; }
  void SetCaption(String caption) { Set(caption_, std::move(caption)); }
  bool Value() const { return value_; }
  void SetValue(bool value);

 private:
  String caption_;
  bool value_ = false;
};

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

/// A view of a web page. Links that are clicked are the view's own affair: the desktop opens them
/// in the browser. It fetches nothing from the network.
class HTMLViewer : public Control {
 public:
  using Control::Control;
  /// Shows the source text. The second argument would be the place of the page for relative
  /// addresses; it is ignored, since a page loads no files.
  void LoadPage(String source, const Ref<FolderItem>& /*base*/) { Set(source_, std::move(source)); }
  const String& Source() const { return source_; }

 private:
  String source_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_CONTROLS_H_
