#include "platform/qt/peers/window_peer.h"

#include <QApplication>
#include <QCloseEvent>
#include <QPainter>
#include <QPushButton>
#include <algorithm>
#include <array>

#include "platform/framework/application.h"
#include "platform/framework/controls.h"
#include "platform/qt/peers/answer_keys.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/picture_widget.h"
#include "platform/qt/widgets/placement.h"

namespace zephin {
namespace {

/// A frame with a title, and a button to close the window if the model has one, but no others.
Qt::WindowFlags FrameOf(const Window& model) {
  Qt::WindowFlags flags = Qt::CustomizeWindowHint | Qt::WindowTitleHint;
  // Only the main window appears in the session's task list.
  flags |= model.ClosesAsQuit() ? Qt::Window : Qt::Dialog;
  flags.setFlag(Qt::WindowCloseButtonHint, model.HasCloseButton());
  return flags;
}

bool IsPressable(const PushButton& button) {
  return button.Visible() && button.Enabled();
}

/// The first button in the order of creation for which `is` is true, else null.
template <class Predicate>
const PushButton* FindButton(const Window& model, Predicate is) {
  for (const Ref<Control>& control : model.Controls()) {
    const auto* button = dynamic_cast<const PushButton*>(&*control);
    if (button != nullptr && is(*button)) {
      return button;
    }
  }
  return nullptr;
}

}  // namespace

WindowPeer::WindowPeer(Window& model) : QDialog(nullptr, FrameOf(model)), model_(&model) {
  for (const Ref<Control>& control : model.Controls()) {
    peers_.push_back(MakePeer(*control, *this));
    peersByControl_[&*control] = peers_.back().get();
  }
  Update();
  for (const auto& peer : peers_) {
    peer->Update();
  }
  SetTabOrder();
  connect(qApp, &QApplication::focusChanged, this, [this] {
    if (model_ != nullptr) {
      MarkAnsweringButton();
    }
  });
}

WindowPeer::~WindowPeer() {
  // The base class takes the focus away from its children, which this class must not hear any more.
  disconnect(qApp, nullptr, this, nullptr);
}

void WindowPeer::Update() {
  const QString title = AsWindowTitle(ToQString(model_->Title()));
  if (title != windowTitle()) {
    setWindowTitle(title);
    // The title is the accessible name of pages.
    for (const auto& peer : peers_) {
      peer->Update();
    }
  }
  if (model_->HasBackgroundColor()) {
    QPalette colors = palette();
    colors.setColor(QPalette::Window, QColor::fromRgb(model_->BackgroundColor()));
    setPalette(colors);
  }
  UpdateSize();
  UpdatePosition();
  backdrop_ = ImageOf(model_->Backdrop(), size());
  MarkAnsweringButton();
  update();
}

void WindowPeer::UpdateSize() {
  const QSize wanted(model_->Width(), model_->Height());
  if (model_->Resizeable()) {
    // Otherwise the buttons would lie outside a screen that is smaller than the minimum size.
    setMinimumSize(QSize(model_->MinimumWidth(), model_->MinimumHeight())
                       .boundedTo(RoomOnScreen(this).size()));
    setMaximumSize(model_->MaximumWidth(), model_->MaximumHeight());
    resize(wanted);
  } else {
    setFixedSize(wanted);
  }
}

void WindowPeer::UpdatePosition() {
  // Only a new position counts: the user may have moved the window since.
  const QPoint wanted(model_->Left(), model_->Top());
  if (model_->HasPosition() && wanted != position_) {
    position_ = wanted;
    setGeometry(QRect(wanted, size()));
  }
}

/// The button that Return presses; null if there is none.
const PushButton* WindowPeer::AnsweringButton() const {
  const PushButton* focused = FindButton(*model_, [this](const PushButton& button) {
    return IsPressable(button) && &PeerOf(button)->Widget() == focusWidget();
  });
  return focused != nullptr
             ? focused
             : FindButton(*model_, [](const PushButton& button) { return button.Default(); });
}

/// Lets the toolkit draw the button that Return presses as the default one, and no other.
void WindowPeer::MarkAnsweringButton() {
  const PushButton* answering = AnsweringButton();
  for (const auto& peer : peers_) {
    auto* button = qobject_cast<QPushButton*>(&peer->Widget());
    const bool answers = &peer->Model() == answering;
    // Each call is reported to screen readers, even if nothing changes.
    if (button != nullptr && button->isDefault() != answers) {
      button->setDefault(answers);
    }
  }
}

void WindowPeer::SetTabOrder() {
  std::vector<ControlPeer*> order;
  for (const auto& peer : peers_) {
    if (peer->Model().TabIndex() >= 0 || peer->ComesLastInTabOrder()) {
      order.push_back(peer.get());
    } else {
      peer->Widget().setFocusPolicy(Qt::NoFocus);
    }
  }
  std::stable_sort(order.begin(), order.end(), [](const ControlPeer* a, const ControlPeer* b) {
    const auto rank = [](const ControlPeer* peer) {
      return std::pair(peer->ComesLastInTabOrder(), peer->Model().TabIndex());
    };
    return rank(a) < rank(b);
  });
  for (ControlPeer* peer : order) {
    if (!tabOrder_.empty()) {
      QWidget::setTabOrder(&tabOrder_.back()->Widget(), &peer->Widget());
    }
    tabOrder_.push_back(peer);
  }
}

/// The widget that has the focus when the window opens. Never a button that quits or cancels: those
/// who type before they read would press it.
QWidget* WindowPeer::FirstFocus() {
  using Rule = bool (*)(const Control&);
  constexpr std::array<Rule, 5> kRules{
      [](const Control& c) { return dynamic_cast<const TextField*>(&c) != nullptr; },
      [](const Control& c) {
        const auto* radio = dynamic_cast<const RadioButton*>(&c);
        return radio != nullptr && radio->Value();
      },
      [](const Control& c) { return dynamic_cast<const CheckBox*>(&c) != nullptr; },
      [](const Control& c) {
        const auto* button = dynamic_cast<const PushButton*>(&c);
        return button != nullptr && button->Default();
      },
      [](const Control& c) { return dynamic_cast<const PushButton*>(&c) == nullptr; },
  };
  for (const Rule rule : kRules) {
    for (const ControlPeer* peer : tabOrder_) {
      QWidget& widget = peer->Widget();
      if (widget.isVisible() && widget.isEnabled() && widget.focusPolicy() != Qt::NoFocus &&
          rule(peer->Model())) {
        return &widget;
      }
    }
  }
  return this;
}

ControlPeer* WindowPeer::PeerOf(const Control& control) const {
  const auto found = peersByControl_.find(&control);
  return found == peersByControl_.end() ? nullptr : found->second;
}

void WindowPeer::UpdateControl(const Control& control) {
  if (ControlPeer* peer = PeerOf(control)) {
    peer->Update();
    MarkAnsweringButton();
  }
}

void WindowPeer::Appear(QWidget* over) {
  if (isVisible()) {
    return;
  }
  Place(*this, *model_, over);
  PutAbove(*this, over);
  show();
  isNew_ = true;
  // After `show`, in which the toolkit chooses a focus. With this reason the focus is visible.
  FirstFocus()->setFocus(Qt::TabFocusReason);
}

void WindowPeer::Disappear() {
  hide();
  // A window can be run modally while it is run already; all of these calls return.
  for (QEventLoop* loop : modalLoops_) {
    loop->quit();
  }
}

void WindowPeer::RunModal(QWidget* over) {
  if (isVisible() && windowModality() != Qt::ApplicationModal) {
    hide();  // A change of modality has no effect on a visible window.
  }
  setWindowModality(Qt::ApplicationModal);
  Appear(over);
  QEventLoop loop;
  modalLoops_.push_back(&loop);
  loop.exec();
  std::erase(modalLoops_, &loop);
}

void WindowPeer::Forget() {
  Disappear();
  peersByControl_.clear();
  peers_.clear();
  model_ = nullptr;
}

void WindowPeer::Press(const PushButton* button) const {
  if (button != nullptr && IsPressable(*button)) {
    static_cast<QPushButton&>(PeerOf(*button)->Widget()).click();
  }
}

void WindowPeer::PressDefault() {
  Press(AnsweringButton());
}

void WindowPeer::reject() {
  Press(FindButton(
      *model_, [](const PushButton& button) { return button.Cancel() && IsPressable(button); }));
}

void WindowPeer::closeEvent(QCloseEvent* event) {
  // The model hides its window itself, or refuses.
  event->ignore();
  if (model_ != nullptr && model_->ClosesAsQuit()) {
    ChooseQuit();
  }
}

void WindowPeer::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(QPoint(0, 0), backdrop_);
}

void WindowPeer::resizeEvent(QResizeEvent* /*event*/) {
  // The program's own changes come here as well, and must not move any control.
  if (model_ == nullptr || !model_->Resizeable() ||
      (width() == model_->Width() && height() == model_->Height())) {
    return;
  }
  model_->ResizedByUser(width(), height());
  backdrop_ = ImageOf(model_->Backdrop(), size());
}

}  // namespace zephin
