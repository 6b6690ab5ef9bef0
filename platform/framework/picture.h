#ifndef PLATFORM_FRAMEWORK_PICTURE_H_
#define PLATFORM_FRAMEWORK_PICTURE_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/framework/exceptions.h"

namespace zephin {

/// Pixels in memory, opaque, black at first. Rows run from the top, pixels from the left.
class Picture {
 public:
  /// In pixels.
  static constexpr std::int64_t kLongestSide = 32767;

  /// `depth` must be 32. A side below 0 or above kLongestSide raises OutOfMemoryException before
  /// memory is taken; sides of 0 make an empty picture.
  Picture(std::int64_t width, std::int64_t height, int /*depth*/)
      : width_(CheckedSide(width)),
        height_(CheckedSide(height)),
        pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), kBlack) {}

  int Width() const { return width_; }
  int Height() const { return height_; }
  /// 0: all pixels are drawn. 1: white ones show what lies behind.
  int Transparent() const { return transparent_; }
  void SetTransparent(int transparent) { transparent_ = transparent; }

  /// All pixels, row by row, as 0xFFRRGGBB.
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
