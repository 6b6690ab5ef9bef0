#include "dialogs/pixel_strings.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <random>

#include "dialogs/message_modal.h"
#include "platform/framework/exceptions.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

using ViewConst::PixelStringToPicture;
using Pixels = std::vector<std::uint32_t>;

String Digits(std::string digits) {
  return {std::move(digits), Encoding::None};
}

/// Peak memory of this process in megabytes.
std::int64_t PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

class PixelStrings : public testing::Test {
 protected:
  PixelStrings() { run.BareWindow(); }
  StubRun run;
};

TEST_F(PixelStrings, RunsAreWrittenOut) {
  const struct {
    const char* text;
    const char* expanded;
  } rows[] = {
      {"", ""},
      {"no runs]", "no runs]"},
      {"A[1]", "A"},
      {"A[0]", ""},
      {"A[-3]B", "B"},
      {"12A[3]34", "12AAA34"},
      {"AB[2]C[2]", "ABBCC"},
      {"A[2.9]B[ 2]C[x]D[]E", "AABBE"},
      {"A[1e1]", "AAAAAAAAAA"},
      // Right behind a run its own bracket is the digit.
      {"A[2][2]B", "AA]]B"},
      {"A[2[9]", "AA"},
      {"F[8]0[14]F[2]", "FFFFFFFF00000000000000FF"},
  };
  for (const auto& row : rows) {
    String text = Digits(row.text);
    ViewConst::PixelStringExpand(text);
    EXPECT_EQ(text.Bytes(), row.expanded) << row.text;
  }
}

TEST_F(PixelStrings, PicturesHaveTheirPixelsFromTheTopLeft) {
  const std::uint32_t white = 0xFFFFFFFF;
  const struct {
    std::int64_t width, height;
    const char* digits;
    Pixels pixels;
  } rows[] = {
      {1, 1, "F[6]", {white}},
      {1, 1, "FF0000", {0xFFFF0000}},
      {2, 2, "F[8]0[14]F[2]", {white, 0xFFFF0000, 0xFF000000, 0xFF0000FF}},
      {3, 1, "1[3]2[3]3[3]4[9]", {0xFF111222, 0xFF333444, 0xFF444444}},
      {1, 1, "12345678", {0xFF123456}},
      {1, 2, "12345F[999]", {0xFF12345F, white}},
      // A wrong digit is only a wrong colour: "a" is worth 42.
      {1, 1, "0a0Aa0", {0xFF2A0AA0}},
      {0, 0, "x", {}},
      {5, 0, "A[3]", {}},
  };
  for (const auto& row : rows) {
    const Ref<Picture> picture = PixelStringToPicture(row.width, row.height, Digits(row.digits));
    EXPECT_EQ(picture->Width(), row.width) << row.digits;
    EXPECT_EQ(picture->Height(), row.height) << row.digits;
    EXPECT_EQ(Pixels(picture->Pixels().begin(), picture->Pixels().end()), row.pixels) << row.digits;
  }
  EXPECT_TRUE(PixelStringToPicture(2, 2, "").IsNil());
}

TEST_F(PixelStrings, RandomPicturesAreThoseOfTheirDigits) {
  std::mt19937 engine(7);
  const auto below = [&engine](std::int64_t bound) {
    return std::uniform_int_distribution<std::int64_t>(0, bound - 1)(engine);
  };
  for (int round = 0; round < 300; ++round) {
    const std::int64_t width = below(9);
    const std::int64_t height = below(9);
    std::string runs;
    std::string digits;
    while (std::ssize(digits) < width * height * 6) {
      const char digit = "0123456789ABCDEF"[below(16)];
      if (below(2) == 0) {
        runs += digit;
        digits += digit;
      } else {
        const std::int64_t count = below(below(2) == 0 ? 8 : 60);
        runs += digit + ("[" + std::to_string(count) + "]");
        digits.append(static_cast<std::size_t>(count), digit);
      }
    }
    Pixels expected;
    for (std::int64_t i = 0; i < width * height; ++i) {
      const std::string six = digits.substr(static_cast<std::size_t>(i) * 6, 6);
      expected.push_back(0xFF000000U | static_cast<std::uint32_t>(std::stoul(six, nullptr, 16)));
    }
    const Ref<Picture> picture = PixelStringToPicture(width, height, Digits(runs + "0"));
    ASSERT_EQ(Pixels(picture->Pixels().begin(), picture->Pixels().end()), expected) << runs;
  }
}

TEST_F(PixelStrings, WhatIsNoPictureIsToldWithoutTakingItsMemory) {
  const std::string fifty = "0[25000000]1[25000000]";
  const struct {
    std::int64_t width, height;
    std::string digits;
  } rows[] = {
      {1, 1, "[6]FFFFFF"},
      {1, 1, "FFFFFFA[6"},
      {1, 1, "F[5]"},
      {1, 1, "F[5]0[0]"},
      {-1, 1, "F[6]"},
      {-1, -1, "F[6]"},
      {32767, 32767, "F[6]"},
      {32768, 1, "0[200000]"},
      {INT64_MAX, INT64_MAX, "F[6]"},
      {1, 1, "F[50000001]"},
      {1, 1, fifty + "0"},
      {1, 1, fifty + "0[1]"},
      {1, 1, "F[99999999999999999999]"},
  };
  const std::int64_t before = PeakMegabytes();
  for (const auto& row : rows) {
    run.desktop.ExpectWindow("Error Message", [](Window& window) {
      EXPECT_EQ(dynamic_cast<MessageModal&>(window).MessageText()->Text().Bytes(),
                "INSUFFICIENT RAM.\n\nUnable to process picture due to RAM shortage.");
      ScriptedDesktop::Press(window, "Btn3");
    });
    EXPECT_TRUE(PixelStringToPicture(row.width, row.height, Digits(row.digits)).IsNil())
        << row.digits;
  }
  // The most that a string may stand for is still no failure.
  EXPECT_FALSE(PixelStringToPicture(1, 1, Digits(fifty)).IsNil());
  EXPECT_LT(PeakMegabytes() - before, 40);

  String text = Digits(fifty + "0");
  EXPECT_THROW(ViewConst::PixelStringExpand(text), OutOfMemoryException);
  EXPECT_EQ(text.Bytes(), fifty + "0");
}

TEST_F(PixelStrings, QuitWhileAPictureIsMadeIsNoFailure) {
  run.desktop.After(0, [] { Quit(0); });
  EXPECT_EQ(run.Call([] { (void)PixelStringToPicture(1000, 400, Digits("0[2400000]")); }), 0);
}

TEST_F(PixelStrings, TextsTravelAsUtf16LowByteFirst) {
  const struct {
    const char* digits;
    const char* text;
  } rows[] = {
      {"41004200", "AB"},           {"410042005", "AB"},        {"", ""},
      {"A9036526", "\u03A9\u2665"}, {"3DD800DE", "\U0001F600"},
  };
  for (const auto& row : rows) {
    const String text = ViewConst::UnicodeFromHex(row.digits, true);
    EXPECT_EQ(text.Bytes(), row.text) << row.digits;
    EXPECT_EQ(text.DeclaredEncoding(), Encoding::UTF8) << row.digits;
    EXPECT_EQ(ViewConst::UnicodeFromHex(row.digits, false).Bytes(), row.digits);
  }
}

}  // namespace
}  // namespace zephin::test
