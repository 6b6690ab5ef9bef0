#ifndef PLATFORM_QT_WIDGETS_PICTURE_WIDGET_H_
#define PLATFORM_QT_WIDGETS_PICTURE_WIDGET_H_

#include <QImage>
#include <QWidget>

#include "platform/framework/picture.h"
#include "platform/framework/ref.h"

namespace zephin {

/// Draws an image from the widget's top left corner, one pixel to a point, clipped to the widget.
class PictureWidget final : public QWidget {
 public:
  /// Without an image at first. The parent owns the widget.
  explicit PictureWidget(QWidget* parent) : QWidget(parent) {}
  /// A null image draws nothing.
  void SetImage(QImage image);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QImage image_;
};

/// The top left part of the picture that fits into `size`. White pixels are clear if the picture is
/// transparent. Null if the picture is nil or has no pixels.
QImage ImageOf(const Ref<Picture>& picture, const QSize& size);

}  // namespace zephin

#endif  // PLATFORM_QT_WIDGETS_PICTURE_WIDGET_H_
