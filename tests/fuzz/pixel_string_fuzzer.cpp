// Makes pictures from any bytes: the first two characters are the width and the height, of which
// "0" is none and small letters are powers of four, "a" being 1. Finds pixels and runs that aren't
// those of the digits, and memory taken for sizes that are only claimed (which the limits of its
// run forbid).
#include <algorithm>
#include <string>

#include "dialogs/pixel_strings.h"
#include "platform/framework/exceptions.h"
#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"

namespace zephin::test {
namespace {

constexpr std::int64_t kMostDigits = 50'000'000;
// Beyond it only what needs no look at the digits is compared, for speed.
constexpr std::int64_t kMostCompared = 20'000;

/// A pixel string with its runs written out.
struct Expansion {
  bool isValid = true;
  std::int64_t length = 0;
  std::string digits;  ///< The first ones, somewhat more than kMostCompared at the most.

  void Take(char digit, std::int64_t count) {
    length += count;
    const std::int64_t room = std::max<std::int64_t>(kMostCompared + 1 - std::ssize(digits), 0);
    digits.append(static_cast<std::size_t>(std::min(count, room)), digit);
  }
};

Expansion Expand(std::string_view text) {
  Expansion expansion;
  for (std::size_t at = 0; at < text.size();) {
    const bool isRun = at + 1 < text.size() && text[at + 1] == '[';
    const std::size_t close = isRun ? text.find(']', at + 1) : at;
    if (text[at] == '[' || close == std::string_view::npos) {
      return {false, 0, ""};
    }
    const std::string count(text.substr(at + 1, close - at).substr(isRun ? 1 : 0));
    const std::int64_t times = isRun ? ValInteger({count, Encoding::None}) : 1;
    if (times > kMostDigits || expansion.length + times > kMostDigits) {
      return {false, 0, ""};
    }
    expansion.Take(text[at], std::max<std::int64_t>(times, 0));
    // The bracket that ends a run is the digit of one that follows at once.
    const bool runFollows = isRun && close + 1 < text.size() && text[close + 1] == '[';
    at = runFollows ? close : close + 1;
  }
  return expansion;
}

unsigned ValueOf(char c) {
  const auto digit = static_cast<unsigned char>(c);
  return digit >= '0' && digit <= '9' ? digit - '0' : digit >= 'A' ? digit - 'A' + 10U : digit;
}

std::uint32_t PixelOf(std::string_view digits) {
  std::uint32_t pixel = 0xFF;
  for (std::size_t i = 0; i < 6; i += 2) {
    pixel = pixel << 8U | ((16 * ValueOf(digits[i]) + ValueOf(digits[i + 1])) & 0xFFU);
  }
  return pixel;
}

void CheckText(const String& pixelString, const Expansion& expected) {
  String text = pixelString;
  try {
    ViewConst::PixelStringExpand(text);
    Require(expected.isValid && std::ssize(text.Bytes()) == expected.length);
    Require(text.View().starts_with(expected.digits));
  } catch (const OutOfMemoryException&) {
    Require(!expected.isValid && text == pixelString);
  }
}

void CheckPicture(std::int64_t width, std::int64_t height, const String& pixelString,
                  const Expansion& expected) {
  const Ref<Picture> picture = ViewConst::PixelStringToPicture(width, height, pixelString);
  const bool hasSize = width >= 0 && height >= 0 && std::max(width, height) <= 32767;
  const bool canBe = expected.isValid && hasSize && !pixelString.IsEmpty() &&
                     expected.length >= width * height * 6;
  Require(picture.IsNil() != canBe);
  if (!canBe) {
    return;
  }
  const auto pixels = picture->Pixels();
  Require(picture->Width() == width && std::ssize(pixels) == width * height);
  for (std::size_t i = 0; i < pixels.size() && 6 * i + 6 <= expected.digits.size(); ++i) {
    Require(pixels[i] == PixelOf(std::string_view(expected.digits).substr(6 * i)));
  }
}

std::int64_t SideOf(char c) {
  return c >= 'a' && c <= 'z' ? std::int64_t{1} << 2 * (c - 'a') : c - '0';
}

void MakePictures(std::string_view input) {
  static BareStub<> stub;
  if (input.size() < 2) {
    return;
  }
  const String pixelString = Utf8(std::string(input.substr(2)));
  const Expansion expected = Expand(pixelString.View());
  if (!expected.isValid || expected.length <= kMostCompared) {
    CheckText(pixelString, expected);
  }
  CheckPicture(SideOf(input[0]), SideOf(input[1]), pixelString, expected);
}

}  // namespace
}  // namespace zephin::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  zephin::test::MakePictures(zephin::test::AsText(bytes, size));
  return 0;
}
