#include "tools/make_setup/pictures.h"

#include <png.h>

#include <algorithm>
#include <cstdint>

#include "setup/limits.h"
#include "tools/make_setup/record_writer.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

constexpr std::int64_t kDigitsPerPixel = 6;
/// "A[4]" is no shorter than "AAAA".
constexpr std::size_t kShortestRun = 5;

/// Ends the reading of a picture, whichever way it ends.
struct PngImage : png_image {
  PngImage() : png_image{} { version = PNG_IMAGE_VERSION; }
  ~PngImage() { png_image_free(this); }
  PngImage(const PngImage&) = delete;
  PngImage& operator=(const PngImage&) = delete;
};

}  // namespace

PixelRows ReadPng(const std::filesystem::path& path) {
  PngImage image;
  if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
    throw SetupError(path.string() + ": must be a PNG file that can be read");
  }
  // Known from the file's head, before any memory is taken for the pixels.
  if (std::int64_t{image.width} * image.height > kMostPixelDigits / kDigitsPerPixel) {
    throw SetupError(path.string() + ": must have at most " +
                     std::to_string(kMostPixelDigits / kDigitsPerPixel) + " pixels, has " +
                     std::to_string(image.width) + " x " + std::to_string(image.height));
  }
  image.format = PNG_FORMAT_RGB;
  PixelRows picture{static_cast<int>(image.width), static_cast<int>(image.height),
                    std::string(PNG_IMAGE_SIZE(image), '\0')};
  // What is transparent becomes white, which the installer draws as transparent.
  const png_color white{255, 255, 255};
  if (png_image_finish_read(&image, &white, picture.rgb.data(), 0, nullptr) == 0) {
    throw SetupError(path.string() + ": must be a PNG file that is whole");
  }
  return picture;
}

std::string PixelString(const PixelRows& picture) {
  const std::string digits = HexDigits(picture.rgb);
  std::string runs;
  // By digits, not by pixels: runs of the installer's form may end within a pixel.
  for (std::size_t start = 0; start < digits.size();) {
    const std::size_t end = std::min(digits.find_first_not_of(digits[start], start), digits.size());
    if (end - start < kShortestRun) {
      runs.append(digits, start, end - start);
    } else {
      runs += digits[start] + ("[" + std::to_string(end - start) + "]");
    }
    start = end;
  }
  return runs;
}

}  // namespace zephin::make_setup
