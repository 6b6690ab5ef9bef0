#include "dialogs/pixel_strings.h"

#include <algorithm>
#include <array>
#include <new>
#include <string>

#include "dialogs/conflict.h"
#include "dialogs/pixel_runs.h"
#include "platform/framework/application.h"
#include "platform/framework/text.h"
#include "util/hex_text.h"

namespace zephin::ViewConst {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr int kDigitsPerPixel = 6;
constexpr std::size_t kBlock = 1 << 20;

/// Turns a stream of digits into pixels in one pass, whole pixels at a time where it can, whatever
/// pixel borders the runs cross.
class PixelWriter {
 public:
  explicit PixelWriter(std::span<std::uint32_t> pixels)
      : bytes_(HexPairs().data()), next_(pixels.data()), end_(next_ + pixels.size()) {}

  void Plain(const char* digits, std::int64_t count) {
    for (; count > 0 && phase_ != 0; --count) {
      Digit(*digits++);
    }
    const std::int64_t whole = WholePixels(count);
    for (std::int64_t i = 0; i < whole; ++i, digits += kDigitsPerPixel) {
      *next_++ = PixelOf(digits);
    }
    for (count -= whole * kDigitsPerPixel; count > 0 && next_ != end_; --count) {
      Digit(*digits++);
    }
  }

  void Run(char digit, std::int64_t count) {
    for (; count > 0 && phase_ != 0; --count) {
      Digit(digit);
    }
    const std::int64_t whole = WholePixels(count);
    const std::array<char, 2> pair{digit, digit};
    // All pixels within a run are equal, and all three colours of each: the same two digits.
    next_ = std::fill_n(next_, whole, kOpaque | HexByte(bytes_, pair.data()) * 0x010101U);
    for (count -= whole * kDigitsPerPixel; count > 0 && next_ != end_; --count) {
      Digit(digit);
    }
  }

 private:
  std::uint32_t PixelOf(const char* digits) const {
    return kOpaque | std::uint32_t{HexByte(bytes_, digits)} << 16U |
           std::uint32_t{HexByte(bytes_, digits + 2)} << 8U | HexByte(bytes_, digits + 4);
  }
  std::int64_t WholePixels(std::int64_t count) const {
    return std::min<std::int64_t>(count / kDigitsPerPixel, end_ - next_);
  }
  void Digit(char digit) {
    partial_[static_cast<std::size_t>(phase_++)] = digit;
    if (phase_ == kDigitsPerPixel) {
      phase_ = 0;
      *next_++ = PixelOf(partial_.data());
    }
  }

  const std::uint8_t* bytes_;
  std::uint32_t* next_;
  std::uint32_t* end_;
  std::array<char, kDigitsPerPixel> partial_{};
  int phase_ = 0;
};

/// Fills the picture from the string, which must have digits enough.
void Fill(Picture& picture, const String& pixelString) {
  PixelWriter writer(picture.Pixels());
  std::int64_t sinceYield = 0;
  ForEachRun(pixelString.View(), [&](std::string_view plain, char digit, std::int64_t count) {
    writer.Plain(plain.data(), std::ssize(plain));
    writer.Run(digit, count);
    // A run of a few bytes can expand to millions of digits, so the expanded length counts.
    sinceYield += std::ssize(plain) + count;
    if (sinceYield > std::int64_t{kBlock}) {
      sinceYield = 0;
      RuntimeBackgroundTask();
    }
  });
}

Ref<Picture> MakePicture(std::int64_t width, std::int64_t height, const String& pixelString) {
  // All that can be wrong is found before memory is taken for the picture.
  const std::int64_t digits = ExpandedLength(pixelString.View());
  if (width < 0 || height < 0 || width > Picture::kLongestSide || height > Picture::kLongestSide ||
      digits < width * height * kDigitsPerPixel) {
    throw OutOfMemoryException();
  }
  Ref<Picture> picture = MakeRef<Picture>(width, height, 32);
  Fill(*picture, pixelString);
  return picture;
}

Ref<Picture> ReportNoMemory() {
  GlobalsVk::gConflictType = GlobalsVk::kPictureMemoryMessage;
  GlobalsVk::PoseConflictDialog();
  return nullptr;
}

}  // namespace

Ref<Picture> PixelStringToPicture(std::int64_t width, std::int64_t height,
                                  const String& pixelString) {
  if (pixelString.IsEmpty()) {
    return nullptr;
  }
  // Only failures are caught here: a Quit while events run must pass.
  try {
    return MakePicture(width, height, pixelString);
  } catch (const FrameworkException&) {
    return ReportNoMemory();
  } catch (const std::bad_alloc&) {
    return ReportNoMemory();
  }
}

void PixelStringExpand(String& text) {
  // Texts without runs are common and may hold anything: they are neither checked nor copied.
  if (text.View().find('[') == std::string_view::npos) {
    return;
  }
  std::string expanded;
  expanded.reserve(static_cast<std::size_t>(ExpandedLength(text.View())));
  ForEachRun(text.View(), [&](std::string_view plain, char digit, std::int64_t count) {
    expanded.append(plain).append(static_cast<std::size_t>(count), digit);
    RuntimeBackgroundTask();
  });
  text = String(std::move(expanded), text.DeclaredEncoding());
}

}  // namespace zephin::ViewConst
