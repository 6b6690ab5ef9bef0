#include "tools/make_setup/pixel_string.h"

#include <png.h>

#include <cstdint>

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
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string triple;
  char digit = 0;
  std::size_t count = 0;
  const auto endRun = [&] {
    if (count < kShortestRun) {
      triple.append(count, digit);
    } else {
      triple += digit + ("[" + std::to_string(count) + "]");
    }
    count = 0;
  };
  const auto add = [&](char next) {
    if (next != digit) {
      endRun();
      digit = next;
    }
    ++count;
  };
  for (const char c : picture.rgb) {
    const auto byte = static_cast<unsigned char>(c);
    add(kDigits[byte / 16]);
    add(kDigits[byte % 16]);
  }
  endRun();
  return triple + "," + std::to_string(picture.width) + "," + std::to_string(picture.height);
}

}  // namespace zephin::make_setup
