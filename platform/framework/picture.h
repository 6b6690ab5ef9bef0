#ifndef PLATFORM_FRAMEWORK_PICTURE_H_
#define PLATFORM_FRAMEWORK_PICTURE_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/framework/exceptions.h"

namespace zephin {

/// Opaque pixels in memory, black at first. Rows are stored from the top, the pixels of a row from
/// the left.
class Picture {
 public:
  /// Limit for both sides, in pixels. The memory for a picture is at most about 4 GB.
  static constexpr std::int64_t kLongestSide = 32767;

  /// Sides are in pixels; a side of 0 makes an empty picture. A side below 0 or above kLongestSide
  /// throws OutOfMemoryException before any memory is allocated. The depth is ignored: all pictures
  /// have 32 bits per pixel.
  Picture(std::int64_t width, std::int64_t height, int /*depth*/)
      : width_(CheckedSide(width)),
        height_(CheckedSide(height)),
        pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), kBlack) {}

  int Width() const { return width_; }
  int Height() const { return height_; }
  /// 0: all pixels are drawn. 1: white pixels are not drawn.
  int Transparent() const { return transparent_; }
  void SetTransparent(int transparent) { transparent_ = transparent; }

  /// All pixels as 0xFFRRGGBB. The span is valid as long as the picture.
  std::span<const std::uint32_t> Pixels() const { return pixels_; }
  std::span<std::uint32_t> Pixels() { return pixels_; }

 private:
  static constexpr std::uint32_t kBlack = 0xFF000000;

  static int CheckedSide(std::int64_t side) {
    if (side < 0 || side > kLongestSide) {
      throw OutOfMemoryException();
    }
    return static_cast<int>(side);
  }

  int width_;
  int height_;
  int transparent_ = 0;
  std::vector<std::uint32_t> pixels_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_PICTURE_H_
