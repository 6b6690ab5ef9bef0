#include "platform/qt/widgets/picture_image.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace zephin {
namespace {

constexpr std::uint32_t kWhite = 0xFFFFFFFF;

}  // namespace

QImage ImageOf(const Ref<Picture>& picture, const QSize& place) {
  if (picture.IsNil()) {
    return {};
  }
  const int width = std::min(picture->Width(), place.width());
  const int height = std::min(picture->Height(), place.height());
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
