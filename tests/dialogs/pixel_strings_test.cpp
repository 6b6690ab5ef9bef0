#include "dialogs/pixel_strings.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "dialogs/message_modal.h"
#include "platform/framework/exceptions.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

using ViewConst::PixelStringToPicture;
using Pixels = std::vector<std::uint32_t>;

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

TEST_F(PixelStrings, RunsAreExpanded) {
  const std::vector<std::pair<const char*, const char*>> rows{
      {"", ""},
      {"no runs]", "no runs]"},
      {"A[1]B[0]C[-3]D", "AD"},
      {"12A[3]34", "12AAA34"},
      {"A[2.9]B[ 2]C[x]D[]E", "AABBE"},
      // Directly after a run, the digit of the next run is the closing bracket.
      {"A[2][2]B", "AA]]B"},
      {"A[2[9]", "AA"},
      {"F[8]0[14]F[2]", "FFFFFFFF00000000000000FF"},
  };
  for (const auto& [digits, expanded] : rows) {
    String text = digits;
    ViewConst::PixelStringExpand(text);
    EXPECT_EQ(text.Bytes(), expanded) << digits;
  }
}

TEST_F(PixelStrings, PixelsAreInRowsFromTheTopLeft) {
  struct Row {
    std::int64_t width, height;
    const char* digits;
    Pixels pixels;
  };
  const std::vector<Row> rows{
      {2, 2, "F[8]0[14]F[2]", {0xFFFFFFFF, 0xFFFF0000, 0xFF000000, 0xFF0000FF}},
      {3, 1, "1[3]2[3]3[3]4[9]", {0xFF111222, 0xFF333444, 0xFF444444}},
      {1, 1, "12345678", {0xFF123456}},
      // Pixels begin anywhere in a run.
      {2, 2, "12345[4]6789ABC[10]D[9]", {0xFF123455, 0xFF556789, 0xFFABCCCC, 0xFFCCCCCC}},
      {3, 1, "A0[12]123456[1]78", {0xFFA00000, 0xFF000000, 0xFF012345}},
      // An invalid digit gives a wrong colour: "a" counts as 42.
      {1, 1, "0a0Aa0", {0xFF2A0AA0}},
      {0, 0, "x", {}},
      {5, 0, "A[3]", {}},
  };
  for (const auto& row : rows) {
    const Ref<Picture> picture = PixelStringToPicture(row.width, row.height, row.digits);
    EXPECT_EQ(picture->Width(), row.width) << row.digits;
    EXPECT_EQ(picture->Height(), row.height) << row.digits;
    EXPECT_EQ(Pixels(picture->Pixels().begin(), picture->Pixels().end()), row.pixels) << row.digits;
  }
  EXPECT_TRUE(PixelStringToPicture(2, 2, "").IsNil());
}

TEST_F(PixelStrings, InvalidPictureIsReportedWithoutAllocatingItsSize) {
  const std::string most = "0[25000000]1[25000000]";
  const std::vector<std::tuple<std::int64_t, std::int64_t, std::string>> rows{
      {1, 1, "[6]FFFFFF"},     {1, 1, "FFFFFFA[6"},    {1, 1, "F[5]"},
      {1, 1, "F[5]0[0]"},      {-1, -1, "F[6]"},       {32767, 32767, "F[6]"},
      {32768, 1, "0[200000]"}, {INT64_MAX, 2, "F[6]"}, {1, 1, "F[50000001]"},
      {1, 1, most + "0"},      {1, 1, most + "0[1]"},  {1, 1, "F[99999999999999999999]"},
  };
  const std::int64_t before = PeakMegabytes();
  for (const auto& [width, height, digits] : rows) {
    run.desktop.ExpectWindow("Error Message", [](Window& shown) {
      EXPECT_EQ(dynamic_cast<MessageModal&>(shown).MessageText()->Text().Bytes(),
                "INSUFFICIENT RAM.\n\nUnable to process picture due to RAM shortage.");
      ScriptedDesktop::Press(shown, "Btn3");
    });
    EXPECT_TRUE(PixelStringToPicture(width, height, Utf8(digits)).IsNil()) << digits;
  }
  // The largest allowed expansion succeeds.
  EXPECT_FALSE(PixelStringToPicture(1, 1, Utf8(most)).IsNil());
  EXPECT_LT(PeakMegabytes() - before, 40);
  String text = Utf8(most + "0");
  EXPECT_THROW(ViewConst::PixelStringExpand(text), OutOfMemoryException);
  EXPECT_EQ(text.Bytes(), most + "0");
}

TEST_F(PixelStrings, QuitWhileAPictureIsMadeIsNoFailure) {
  run.desktop.After(0, [] { Quit(0); });
  EXPECT_EQ(run.Call([] { (void)PixelStringToPicture(1000, 400, "0[2400000]"); }), 0);
}

}  // namespace
}  // namespace zephin::test
