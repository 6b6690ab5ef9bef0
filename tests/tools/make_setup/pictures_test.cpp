#include "tools/make_setup/pictures.h"

#include <gtest/gtest.h>
#include <png.h>

#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"
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

TEST(PixelString, RunsCrossBytesAndRowsWhereThatIsShorter) {
  const std::vector<std::pair<PixelRows, const char*>> rows{
      {{2, 2, std::string("\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\xFF", 12)}, "F[8]0[14]FF"},
      {{1, 1, "\x12\x34\x56"}, "123456"},
      {{1, 1, "\xAA\xAA\xBC"}, "AAAABC"},
      {{1, 1, "\xAA\xAA\xAB"}, "A[5]B"}};
  for (const auto& [picture, digits] : rows) {
    EXPECT_EQ(PixelString(picture), digits);
  }
}

TEST(ReadPng, TransparentPixelsAreBlendedWithWhiteAndGreyBecomesRgb) {
  const test::ScratchFolder folder;
  WritePng(folder / "a.png", 2, 1, PNG_FORMAT_RGBA, {255, 0, 0, 255, 0, 0, 0, 0});
  EXPECT_EQ(ReadPng(folder / "a.png").rgb, std::string("\xFF\0\0\xFF\xFF\xFF", 6));
  WritePng(folder / "grey.png", 2, 1, PNG_FORMAT_GRAY, {0, 255});
  EXPECT_EQ(ReadPng(folder / "grey.png").rgb, std::string("\0\0\0\xFF\xFF\xFF", 6));
}

TEST(ReadPng, PictureOfTooManyDigitsIsRefusedByName) {
  const test::ScratchFolder folder;
  // 6 digits a pixel: 2777 x 3000 is the last width that 50,000,000 digits hold.
  const std::vector<png_byte> pixels(std::size_t{2778} * 3000);
  WritePng(folder / "large.png", 2778, 3000, PNG_FORMAT_GRAY, pixels);
  WritePng(folder / "fits.png", 2777, 3000, PNG_FORMAT_GRAY, pixels);
  const std::string refusal = Refusal([&] { (void)ReadPng(folder / "large.png"); });
  EXPECT_NE(refusal.find("large.png: must have at most"), std::string::npos) << refusal;
  EXPECT_EQ(ReadPng(folder / "fits.png").width, 2777);
}

}  // namespace
}  // namespace zephin::make_setup
