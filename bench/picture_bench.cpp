#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <string>

#include "dialogs/pixel_strings.h"
#include "platform/framework/application.h"
#include "tests/support/quiet_desktop.h"
#include "tools/make_setup/pictures.h"

// Compares the decoding of a picture with a plain implementation of the same work: character by
// character into a buffer, digit by digit into bytes, pixel by pixel into the picture.

namespace zephin {
namespace {

constexpr int kWidth = 1200;
constexpr int kHeight = 800;
constexpr int kSlice = 10;
constexpr int kWhite = 0xFFFFFF;

void SetPixel(make_setup::PixelRows& picture, int x, int y, int rgb) {
  for (int part = 0; part < 3; ++part) {
    picture.rgb[static_cast<std::size_t>((y * picture.width + x) * 3 + part)] =
        static_cast<char>(rgb >> (16 - 8 * part));
  }
}

/// Windows on a shaded background, with lines of text over a part of their width and a picture of
/// 300 by 200 pixels in one of them: runs and digits mixed. A letter is ink in four shades of grey
/// on a raster of 8 by 16 pixels.
String UserInterface() {
  make_setup::PixelRows picture{kWidth, kHeight, std::string(3UL * kWidth * kHeight, '\0')};
  std::mt19937 random(1);
  std::array<std::array<int, 8 * 16>, 26> letters{};
  for (auto& letter : letters) {
    for (std::size_t i = 0; i < letter.size(); ++i) {
      const bool blank = i % 8 == 7 || i / 8 < 3 || i / 8 > 12 || random() % 3 != 0;
      letter[i] = blank ? kWhite : static_cast<int>(random() % 4) * 0x333333;
    }
  }
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const int inX = x % 400 - 20;  // From the corner of its window.
      const int inY = y % 270 - 30;
      int rgb = inX > 0 && inY > 0 ? kWhite : 0x336600 + y / 8;
      const int letter = (x / 8 * 7 + y / 26 * 11) % 31;
      if (inX > 40 && inX < 260 && inY > 30 && inY % 26 < 16 && letter < 26) {
        rgb = letters[static_cast<std::size_t>(letter)]
                     [static_cast<std::size_t>(inY % 26 * 8 + x % 8)];
      }
      if (x < 300 && y < 200) {
        rgb = static_cast<int>(random() % 0x1000000);
      }
      SetPixel(picture, x, y, rgb);
    }
  }
  return {make_setup::PixelString(picture), Encoding::None};
}

/// Digits without runs, as in a photograph.
String Photograph() {
  std::string digits(6UL * kWidth * kHeight, '\0');
  std::mt19937 random(2);
  for (char& digit : digits) {
    digit = "0123456789ABCDEF"[random() % 16];
  }
  return {std::move(digits), Encoding::None};
}

String PixelsOf(const String& triple) {
  return {triple.Bytes().substr(0, triple.View().find(',')), Encoding::None};
}

/// The buffer and the runs of the plain implementation.
std::string ExpandPlainly(const std::string& text) {
  constexpr std::size_t kBuffer = 50'000'000;
  std::size_t open = text.find('[');
  if (open == std::string::npos) {
    return text;
  }
  std::string buffer(kBuffer, '\0');
  std::size_t end = 0;
  const auto copy = [&](std::size_t from, std::size_t to) {
    for (; from < to; ++from) {
      buffer[end++] = text[from];
    }
  };
  copy(0, open - 1);
  while (open != std::string::npos) {
    const std::size_t close = text.find(']', open);
    const char digit = text[open - 1];
    const int count = static_cast<int>(std::stod(text.substr(open + 1, close - open - 1)));
    for (int i = 0; i < count; ++i) {
      buffer[end++] = digit;
      RuntimeBackgroundTask();
    }
    open = text.find('[', close);
    copy(close + 1, open == std::string::npos ? text.size() : open - 1);
    RuntimeBackgroundTask();
  }
  return buffer.substr(0, end);
}

int PlainDigit(char digit) {
  const auto code = static_cast<unsigned char>(digit);
  if (code >= 48 && code <= 57) {
    return code - 48;
  }
  return code >= 65 ? code - 55 : code;
}

/// The picture of the plain implementation: one call for each pixel.
class PlainGraphics {
 public:
  explicit PlainGraphics(Picture& picture) : picture_(picture) {}
  [[gnu::noinline]] void SetPixel(int x, int y, std::uint32_t color) {
    picture_.Pixels()[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture_.Width()) +
                      static_cast<std::size_t>(x)] = color;
  }

 private:
  Picture& picture_;
};

Ref<Picture> PictureMadePlainly(int width, int height, const std::string& text) {
  const std::string digits = ExpandPlainly(text);
  Ref<Picture> picture = MakeRef<Picture>(width, height, 32);
  const std::size_t count =
      3UL * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  const std::string block = digits.substr(0, 2 * count);
  std::string bytes(count, '\0');
  for (std::size_t i = 0; i < count; ++i) {
    bytes[i] = static_cast<char>(16 * PlainDigit(block[2 * i]) + PlainDigit(block[2 * i + 1]));
    RuntimeBackgroundTask();
  }
  PlainGraphics graphics(*picture);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto i = static_cast<std::size_t>(y * width + x) * 3;
      const auto part = [&](std::size_t at) {
        return std::uint32_t{static_cast<unsigned char>(bytes[i + at])};
      };
      graphics.SetPixel(x, y, 0xFF000000U | part(0) << 16U | part(1) << 8U | part(2));
      RuntimeBackgroundTask();
    }
    RuntimeBackgroundTask();
  }
  return picture;
}

template <class Make>
void Measure(benchmark::State& state, const String& triple, Make make) {
  QuietDesktop desktop;
  desktop.slice = kSlice;
  const Application application(desktop, Machine());
  const String pixels = PixelsOf(triple);
  for (auto pass : state) {
    benchmark::DoNotOptimize(make(pixels));
  }
  state.counters["text"] = static_cast<double>(pixels.Size());
  state.counters["runs"] =
      static_cast<double>(std::count(pixels.View().begin(), pixels.View().end(), '['));
}

void Plain(benchmark::State& state, String (*triple)()) {
  Measure(state, triple(),
          [](const String& pixels) { return PictureMadePlainly(kWidth, kHeight, pixels.Bytes()); });
}

void Product(benchmark::State& state, String (*triple)()) {
  Measure(state, triple(), [](const String& pixels) {
    return ViewConst::PixelStringToPicture(kWidth, kHeight, pixels);
  });
}

BENCHMARK_CAPTURE(Plain, UserInterface, UserInterface)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Product, UserInterface, UserInterface)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Plain, Photograph, Photograph)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Product, Photograph, Photograph)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zephin
