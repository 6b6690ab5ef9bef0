#include "tools/make_setup/pictures.h"

#include <png.h>

#include <algorithm>
#include <cstdint>

#include "tools/make_setup/record_writer.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

constexpr std::uint64_t kMostDigits = 50000000;
constexpr std::uint64_t kDigitsPerPixel = 6;
/// "X[4]" is no shorter than "XXXX".
constexpr std::size_t kShortestRun = 5;

}  // namespace

PixelRows ReadPng(const std::filesystem::path& path) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  const auto refuse = [&] {
    png_image_free(&image);
    throw SetupError(path.string() + ": is no picture in PNG form: " + image.message);
  };
  if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
    refuse();
  }
  if (std::uint64_t{image.width} * image.height > kMostDigits / kDigitsPerPixel) {
    png_image_free(&image);
    throw SetupError(path.string() + ": is too large: " + std::to_string(image.width) + " x " +
                     std::to_string(image.height) + " pixels");
  }
  image.format = PNG_FORMAT_RGB;
  PixelRows picture{static_cast<int>(image.width), static_cast<int>(image.height),
                    std::string(PNG_IMAGE_SIZE(image), '\0')};
  const png_color white{255, 255, 255};
  if (png_image_finish_read(&image, &white, picture.rgb.data(), 0, nullptr) == 0) {
    refuse();
  }
  return picture;
}

std::string PictureTriple(const PixelRows& picture) {
  const std::string digits = HexDigits(picture.rgb);
  std::string triple;
  for (std::size_t start = 0; start < digits.size();) {
    const std::size_t end = std::min(digits.find_first_not_of(digits[start], start), digits.size());
    if (end - start < kShortestRun) {
      triple.append(digits, start, end - start);
    } else {
      triple += digits[start] + ("[" + std::to_string(end - start) + "]");
    }
    start = end;
  }
  return triple + "," + std::to_string(picture.width) + "," + std::to_string(picture.height);
}

}  // namespace zephin::make_setup
