#ifndef PLATFORM_FRAMEWORK_PICTURE_H_
#define PLATFORM_FRAMEWORK_PICTURE_H_

#include <cstdint>
#include <span>
#include <vector>

namespace zephin {

/// Pixels in memory, opaque, black at first. Rows run from the top, pixels from the left.
class Picture {
 public:
  /// In pixels.
  static constexpr std::int64_t kLongestSide = 32767;

  /// `depth` must be 32. A side below 0 or above kLongestSide raises OutOfMemoryException before
  /// memory is taken; sides of 0 make an empty picture.
  Picture(std::int64_t width, std::int64_t height, int depth);

  int Width() const { return width_; }
  int Height() const { return height_; }
  /// 0: all pixels are drawn. 1: white ones show what lies behind.
  int Transparent() const { return transparent_; }
  void SetTransparent(int transparent) { transparent_ = transparent; }

  /// All pixels, row by row, as 0xFFRRGGBB.
  std::span<const std::uint32_t> Pixels() const { return pixels_; }
  std::span<std::uint32_t> Pixels() { return pixels_; }

 private:
  int width_;
  int height_;
  int transparent_ = 0;
  std::vector<std::uint32_t> pixels_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_PICTURE_H_
