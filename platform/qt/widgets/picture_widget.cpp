#include "platform/qt/widgets/picture_widget.h"

#include <QPainter>
#include <algorithm>
#include <cstdint>
#include <span>
#include <utility>

namespace zephin {
namespace {

constexpr std::uint32_t kWhite = 0xFFFFFFFF;

}  // namespace

void PictureWidget::SetImage(QImage image) {
  image_ = std::move(image);
  update();
}

void PictureWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  // On screens with a scale factor, one pixel of the image covers several of the screen.
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(QPoint(0, 0), image_);
}

QImage ImageOf(const Ref<Picture>& picture, const QSize& size) {
  if (picture.IsNil()) {
    return {};
  }
  const int width = std::min(picture->Width(), size.width());
  const int height = std::min(picture->Height(), size.height());
  if (width <= 0 || height <= 0) {
    return {};
  }
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  const std::span<const std::uint32_t> pixels = std::as_const(*picture).Pixels();
  const bool clearWhite = picture->Transparent() == 1;
  for (int y = 0; y < height; ++y) {
    const auto row =
        pixels.subspan(static_cast<std::size_t>(y) * static_cast<std::size_t>(picture->Width()),
                       static_cast<std::size_t>(width));
    std::transform(row.begin(), row.end(), reinterpret_cast<std::uint32_t*>(image.scanLine(y)),
                   [&](std::uint32_t pixel) { return clearWhite && pixel == kWhite ? 0 : pixel; });
  }
  return image;
}

}  // namespace zephin
