#include "platform/qt/widgets/locked_icons.h"

#include <QApplication>
#include <QFileInfo>
#include <QPainter>
#include <QPixmap>
#include <QStyle>

namespace zephin {
namespace {

/// Draws a padlock into the lower right quarter of an icon of that size.
void DrawLock(QPainter& painter, qreal size) {
  const QRectF body(size * 0.55, size * 0.66, size * 0.42, size * 0.32);
  const QRectF shackle(size * 0.63, size * 0.48, size * 0.26, size * 0.36);
  const QColor dark(0x50, 0x40, 0x20);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(dark, size / 14));
  painter.setBrush(Qt::NoBrush);
  painter.drawArc(shackle, 0, 180 * 16);
  painter.setPen(QPen(dark, size / 24));
  painter.setBrush(QColor(0xF0, 0xC0, 0x40));
  painter.drawRect(body);
}

}  // namespace

LockedIcons::LockedIcons() : open_(QApplication::style()->standardIcon(QStyle::SP_DirIcon)) {
  // Pixmaps for the list and the side bar, made once: the list asks from another thread.
  for (const int size : {16, 32}) {
    QPixmap pixmap = open_.pixmap(QSize(size, size), qApp->devicePixelRatio(), QIcon::Disabled);
    QPainter painter(&pixmap);
    DrawLock(painter, size);
    painter.end();
    locked_.addPixmap(pixmap);
  }
}

QIcon LockedIcons::icon(const QFileInfo& info) const {
  if (!info.isDir()) {
    return QFileIconProvider::icon(info);
  }
  return info.isWritable() ? open_ : locked_;
}

}  // namespace zephin
