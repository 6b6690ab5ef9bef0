#include <QLineEdit>
#include <QPlainTextEdit>
#include <optional>

#include "platform/framework/controls.h"
#include "platform/framework/window.h"
#include "platform/qt/peers/control_peer.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/text_widget.h"

namespace zephin {
namespace {

/// The name of a field for screen readers: the text of the nearest label on its left, or the
/// window's title if there is none.
QString NameOfField(const Control& field) {
  const Label* nearest = nullptr;
  for (const Ref<Control>& control : field.Owner()->Controls()) {
    const auto* label = dynamic_cast<const Label*>(&*control);
    if (label == nullptr || label->Left() >= field.Left() ||
        label->Top() + label->Height() <= field.Top() ||
        label->Top() >= field.Top() + field.Height()) {
      continue;
    }
    if (nearest == nullptr || label->Left() > nearest->Left()) {
      nearest = label;
    }
  }
  return ToQString(nearest != nullptr ? nearest->Text() : field.Owner()->Title());
}

class TextFieldPeer final : public ControlPeer {
 public:
  TextFieldPeer(TextField& model, QLineEdit* edit)
      : ControlPeer(model, edit), model_(model), edit_(edit) {
    // Not `textEdited`: assistive programs set the text without the keyboard.
    connect(edit, &QLineEdit::textChanged, this, [this](const QString& text) {
      if (text != ToQString(model_.Text())) {
        model_.SetText(FromQString(text));
      }
    });
  }

 protected:
  void Apply() override {
    // Setting the same text would move the cursor to its end while the user types.
    const QString text = ToQString(model_.Text());
    if (edit_->text() != text) {
      edit_->setText(text);
    }
    edit_->setPlaceholderText(ToQString(model_.Hint()));
    edit_->setEchoMode(model_.Password() ? QLineEdit::Password : QLineEdit::Normal);
    edit_->setAccessibleName(NameOfField(model_));
  }

 private:
  TextField& model_;
  QLineEdit* edit_;
};

class TextAreaPeer final : public ControlPeer {
 public:
  TextAreaPeer(TextArea& model, QPlainTextEdit* edit)
      : ControlPeer(model, edit), model_(model), edit_(edit) {
    // No text of this program has tabs, and Tab must reach the buttons.
    edit->setTabChangesFocus(true);
    edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    edit->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    connect(edit, &QPlainTextEdit::textChanged, this, [this] { TakeText(); });
  }

 protected:
  void Apply() override {
    edit_->setReadOnly(model_.ReadOnly());
    if (model_.ReadOnly()) {
      edit_->setTextInteractionFlags(ReadOnlyFlags());
    }
    // Setting the same text again would scroll back to the top.
    if (!shown_ || !(*shown_ == model_.Text())) {
      shown_ = model_.Text();
      applying_ = true;
      edit_->setPlainText(ToQString(model_.Text()));
      AlignToScript(*edit_);
      applying_ = false;
    }
    edit_->setAccessibleName(ToQString(model_.Owner()->Title()));
  }

 private:
  void TakeText() {
    if (!applying_) {
      shown_ = FromQString(edit_->toPlainText());
      model_.SetText(*shown_);
    }
  }

  TextArea& model_;
  QPlainTextEdit* edit_;
  std::optional<String> shown_;
  bool applying_ = false;
};

}  // namespace

std::unique_ptr<ControlPeer> MakeFieldPeer(Control& control, QWidget& window) {
  if (auto* field = dynamic_cast<TextField*>(&control)) {
    return std::make_unique<TextFieldPeer>(*field, new QLineEdit(&window));
  }
  if (auto* area = dynamic_cast<TextArea*>(&control)) {
    return std::make_unique<TextAreaPeer>(*area, new QPlainTextEdit(&window));
  }
  return nullptr;
}

}  // namespace zephin
