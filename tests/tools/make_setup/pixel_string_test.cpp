#include "tools/make_setup/pixel_string.h"

#include <gtest/gtest.h>
#include <png.h>

#include <string>
#include <vector>

#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

void WritePng(const std::filesystem::path& path, png_uint_32 width, png_uint_32 height,
              png_uint_32 format, const std::vector<png_byte>& pixels) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = width;
  image.height = height;
  image.format = format;
  ASSERT_NE(png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0, nullptr), 0);
}

TEST(PictureTriple, DigitsRunAcrossBytesAndRowsWhereThatIsShorter) {
  struct Row {
    PixelRows picture;
    const char* expected;
  };
  const std::vector<Row> rows{
      {{2, 2, std::string("\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\xFF", 12)}, "F[8]0[14]FF,2,2"},
      {{1, 1, "\x12\x34\x56"}, "123456,1,1"},
      {{1, 1, "\xAA\xAA\xBC"}, "AAAABC,1,1"},
      {{1, 1, "\xAA\xAA\xAB"}, "A[5]B,1,1"},
      {{1, 2, std::string(6, '\x99')}, "9[12],1,2"},
      {{0, 0, ""}, ",0,0"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(PictureTriple(row.picture), row.expected);
  }
}

TEST(ReadPng, TransparencyIsLaidOnWhite) {
  const TestFolder folder;
  WritePng(folder / "a.png", 3, 1, PNG_FORMAT_RGBA, {255, 0, 0, 255, 0, 0, 0, 0, 0, 0, 255, 128});
  const PixelRows picture = ReadPng(folder / "a.png");
  EXPECT_EQ(picture.width, 3);
  EXPECT_EQ(picture.height, 1);
  EXPECT_EQ(picture.rgb.substr(0, 6), std::string("\xFF\0\0\xFF\xFF\xFF", 6));
  // Half of blue and half of white light.
  EXPECT_GT(picture.rgb[6] & 0xFF, 120);
  EXPECT_LT(picture.rgb[6] & 0xFF, 200);
  EXPECT_EQ(picture.rgb[8], '\xFF');
}

TEST(ReadPng, PalettesAndGreyAreTurnedIntoColours) {
  const TestFolder folder;
  WritePng(folder / "grey.png", 2, 1, PNG_FORMAT_GRAY, {0, 255});
  EXPECT_EQ(ReadPng(folder / "grey.png").rgb, std::string("\0\0\0\xFF\xFF\xFF", 6));
}

TEST(ReadPng, WhatIsNoPictureOrTooLargeIsRefusedByName) {
  const TestFolder folder;
  WriteFile(folder / "text.png", "no picture");
  // 6 digits a pixel: one pixel more than 50,000,000 digits hold.
  constexpr png_uint_32 kWidth = 2778;
  constexpr png_uint_32 kHeight = 3000;
  WritePng(folder / "large.png", kWidth, kHeight, PNG_FORMAT_GRAY,
           std::vector<png_byte>(std::size_t{kWidth} * kHeight));
  WritePng(folder / "fits.png", kWidth - 1, kHeight, PNG_FORMAT_GRAY,
           std::vector<png_byte>(std::size_t{kWidth} * kHeight));
  for (const char* name : {"text.png", "missing.png", "large.png"}) {
    const std::string refusal = Refusal([&] { (void)ReadPng(folder / name); });
    EXPECT_NE(refusal.find(name), std::string::npos) << name;
  }
  EXPECT_EQ(ReadPng(folder / "fits.png").width, 2777);
}

}  // namespace
}  // namespace zephin::make_setup
