#include "platform/qt/widgets/picture_widget.h"

#include <gtest/gtest.h>

#include <numeric>

namespace zephin {
namespace {

TEST(ImageOf, WhiteOfATransparentPictureIsTransparent) {
  for (const int transparent : {0, 1}) {
    const Ref<Picture> picture = MakeRef<Picture>(2, 1, 32);
    picture->Pixels()[0] = 0xFFFFFFFF;
    picture->Pixels()[1] = 0xFFFFFFFE;
    picture->SetTransparent(transparent);
    const QImage image = ImageOf(picture, QSize(64, 64));
    EXPECT_EQ(image.pixel(0, 0), transparent == 1 ? 0 : 0xFFFFFFFF);
    EXPECT_EQ(image.pixel(1, 0), 0xFFFFFFFE);
  }
}

TEST(ImageOf, ShowsTheTopLeftPartThatFits) {
  const Ref<Picture> picture = MakeRef<Picture>(5, 4, 32);
  const auto pixels = picture->Pixels();
  std::iota(pixels.begin(), pixels.end(), 0xFF000000);
  const QImage image = ImageOf(picture, QSize(3, 2));
  EXPECT_EQ(image.size(), QSize(3, 2));
  EXPECT_EQ(image.pixel(2, 1), 0xFF000007);
  EXPECT_TRUE(ImageOf(MakeRef<Picture>(0, 0, 32), QSize(3, 2)).isNull());
  EXPECT_TRUE(ImageOf(nullptr, QSize(3, 2)).isNull());
}

}  // namespace
}  // namespace zephin
