#ifndef TOOLS_MAKE_SETUP_PICTURES_H_
#define TOOLS_MAKE_SETUP_PICTURES_H_

#include <filesystem>
#include <string>

/// The pictures that a publisher brings as PNG files.
namespace zephin::make_setup {

/// Rows of pixels from the top without gaps between them. A pixel is the bytes red, green and blue,
/// so there are 3 * width * height bytes.
struct PixelRows {
  int width = 0;  ///< In pixels, as the height.
  int height = 0;
  std::string rgb;
};

/// Reads a PNG file of any kind; transparent pixels are blended with white. Throws SetupError for
/// any other file and for a picture of more digits than the installer reads (kMostPixelDigits).
PixelRows ReadPng(const std::filesystem::path& path);

/// The pixels as hexadecimal digits, two for each byte, as the record holds them. A digit that
/// repeats is written once, with its count in brackets, where that is shorter.
///
///   white, red / black, blue  ->  "F[8]0[14]FF"
std::string PixelString(const PixelRows& picture);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PICTURES_H_
