// Makes pictures of any bytes. The first two characters are the width and the height: "0" is 0, and
// small letters are powers of four, "a" being 1. Finds pictures that differ from those of the same
// digits without runs, and memory that is allocated for sizes without digits (a limit of the run).
#include <algorithm>
#include <string>

#include "dialogs/pixel_runs.h"
#include "dialogs/pixel_strings.h"
#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"

namespace zephin::test {
namespace {

using ViewConst::PixelStringToPicture;

/// Number of digits; negative if this is no pixel string.
std::int64_t LengthOf(const String& pixelString) {
  try {
    return ViewConst::ExpandedLength(pixelString.View());
  } catch (const OutOfMemoryException&) {
    return -1;
  }
}

std::int64_t SideOf(char c) {
  return c >= 'a' && c <= 'z' ? std::int64_t{1} << 2 * (c - 'a') : c - '0';
}

}  // namespace

void TryInput(std::string_view input) {
  BareStub().BareWindow();
  if (input.size() < 2) {
    return;
  }
  const std::int64_t width = SideOf(input[0]);
  const std::int64_t height = SideOf(input[1]);
  String pixelString = Utf8(std::string(input.substr(2)));
  const std::int64_t length = LengthOf(pixelString);
  const Ref<Picture> picture = PixelStringToPicture(width, height, pixelString);
  const bool hasSize = width >= 0 && height >= 0 && std::max(width, height) <= 32767;
  const bool canBe = hasSize && !pixelString.IsEmpty() && length >= width * height * 6;
  Require(picture.IsNil() != canBe);
  // Longer ones would take too long.
  constexpr std::int64_t kMostCompared = 20'000;
  if (length < 0 || length > kMostCompared) {
    return;
  }
  ViewConst::PixelStringExpand(pixelString);
  Require(std::ssize(pixelString.Bytes()) == length);
  if (canBe && length > 0) {
    Require(picture->Width() == width && picture->Height() == height);
    const Ref<Picture> same = PixelStringToPicture(width, height, pixelString);
    Require(std::ranges::equal(picture->Pixels(), same->Pixels()));
  }
}

}  // namespace zephin::test
