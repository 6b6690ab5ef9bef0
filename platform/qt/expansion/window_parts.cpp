#include "platform/qt/expansion/window_parts.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "platform/qt/expansion/failure_window.h"
#include "platform/qt/expansion/installers.h"
#include "platform/qt/expansion/screen_place.h"
#include "platform/qt/widgets/look.h"
#include "platform/qt/widgets/text_widget.h"

namespace zephin {
namespace {

// In points. The frame of a common window manager: the real one isn't known before the window is
// shown.
constexpr QMargins kFrame(4, 30, 4, 4);
constexpr QSize kLeastButton(80, 22);
constexpr int kButtonMargin = 28;

/// Windows of the X server, in points of the toolkit.
std::vector<QRect> Obstacles() {
  const qreal scale = QGuiApplication::primaryScreen()->devicePixelRatio();
  std::vector<QRect> areas = WindowsToSpare();
  for (QRect& area : areas) {
    area = QRectF(area.x() / scale, area.y() / scale, area.width() / scale, area.height() / scale)
               .toAlignedRect();
  }
  return areas;
}

/// The toolkit owns the interfaces. Null lets it make its own.
QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
  if (auto* text = dynamic_cast<TextWidget*>(object)) {
    return new QAccessibleWidget(text, QAccessible::StaticText);
  }
  if (auto* failure = dynamic_cast<FailureWindow*>(object)) {
    return new QAccessibleWidget(failure, QAccessible::AlertMessage);
  }
  return nullptr;
}

}  // namespace

Qt::WindowFlags FlagsOfWindow() {
  return Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;
}

QFont BoldFont() {
  QFont font = SystemFont();
  font.setBold(true);
  return font;
}

TextWidget* MakeText(QWidget* parent, const QString& text, const QFont& font, int width) {
  auto* widget = new TextWidget(parent);
  ChangeText(*widget, text, font, width);
  return widget;
}

void ChangeText(TextWidget& widget, const QString& text, const QFont& font, int width) {
  if (widget.Text() == text && widget.width() == width) {
    return;
  }
  const QSizeF size = SizeOfText(text, font, width);
  widget.setFixedSize(width, static_cast<int>(std::ceil(size.height())) + 2);
  widget.SetText(text, {font, Qt::AlignLeft, FittedText::Lines::Many}, Qt::black);
}

QPushButton* MakeButton(QWidget* parent, const QString& caption) {
  auto* button = new QPushButton(caption, parent);
  const int needed = button->fontMetrics().horizontalAdvance(caption) + kButtonMargin;
  button->setFixedSize(std::max(kLeastButton.width(), needed), kLeastButton.height());
  return button;
}

void ShowBeside(QWidget& window) {
  window.adjustSize();
  const std::vector<QRect> obstacles = Obstacles();
  const QScreen* screen =
      obstacles.empty() ? nullptr : QGuiApplication::screenAt(obstacles.front().center());
  if (screen == nullptr) {
    screen = QGuiApplication::primaryScreen();
  }
  const QPoint corner =
      PlaceBeside(window.size().grownBy(kFrame), screen->availableGeometry(), obstacles);
  window.setGeometry(QRect(corner + QPoint(kFrame.left(), kFrame.top()), window.size()));
  window.show();
}

void SetUpRoles() {
  QAccessible::installFactory(MakeInterface);
}

}  // namespace zephin
