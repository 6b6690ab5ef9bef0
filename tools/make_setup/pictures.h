#ifndef TOOLS_MAKE_SETUP_PICTURES_H_
#define TOOLS_MAKE_SETUP_PICTURES_H_

#include <filesystem>
#include <string>

// The record's form of a picture, a "triple" of three parts with "," between them: pixels, width,
// height. The pixels are rows from the top, each pixel the bytes red, green, blue as two
// hexadecimal digits in capitals; a digit that repeats is written once with its count in brackets.
//
//   white, red / black, blue  ->  "F[8]0[14]FF,2,2"

namespace zephin::make_setup {

/// Pixels without gaps between rows: three bytes each, 3 * width * height in all.
struct PixelRows {
  int width = 0;
  int height = 0;
  std::string rgb;
};

/// Reads a PNG of any kind; what is transparent is laid on white. Throws SetupError for anything
/// else and for a picture of more digits than the stub can expand (50,000,000).
PixelRows ReadPng(const std::filesystem::path& path);

/// The triple, in the shortest choice of runs.
std::string PictureTriple(const PixelRows& picture);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PICTURES_H_
