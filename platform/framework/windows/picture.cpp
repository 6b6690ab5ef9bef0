#include "platform/framework/picture.h"

#include "platform/framework/exceptions.h"

namespace zephin {
namespace {

constexpr std::uint32_t kBlack = 0xFF000000;

int CheckedSide(std::int64_t side) {
  if (side < 0 || side > Picture::kLongestSide) {
    throw OutOfMemoryException();
  }
  return static_cast<int>(side);
}

}  // namespace

Picture::Picture(std::int64_t width, std::int64_t height, int /*depth*/)
    : width_(CheckedSide(width)),
      height_(CheckedSide(height)),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), kBlack) {}

}  // namespace zephin
