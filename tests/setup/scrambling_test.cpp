#include "setup/scrambling.h"

#include <gtest/gtest.h>

#include <random>

#include "setup/scrambling_bytes.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) {
    bytes += static_cast<char>(value);
  }
  return bytes;
}

TEST(Scrambling, OddPositionsGrowByOneAndWrap) {
  StubRun run;
  run.BareWindow();
  const struct {
    std::string plain;
    std::string scrambled;
  } rows[] = {
      {"", ""},
      {Bytes({0xFF}), Bytes({0xFF})},
      {Bytes({0x41, 0x42, 0x43, 0xFF}), Bytes({0x41, 0x43, 0x43, 0x00})},
      {Bytes({0x00, 0xFF, 0x7F, 0x7F, 0x80, 0x80, 0xFE, 0xFE, 0xFF, 0xFF}),
       Bytes({0x00, 0x00, 0x7F, 0x80, 0x80, 0x81, 0xFE, 0xFF, 0xFF, 0x00})},
  };
  for (const auto& row : rows) {
    // A label would have its characters counted, not its bytes.
    String text(row.scrambled, Encoding::UTF8);
    EXPECT_EQ(ViewConst::Encrypt({row.plain, Encoding::None}).Bytes(), row.scrambled);
    ViewConst::DecryptStr(text);
    EXPECT_EQ(text.Bytes(), row.plain);
    EXPECT_EQ(text.DeclaredEncoding(), Encoding::None);
  }
}

TEST(Scrambling, AnyCutIntoBlocksGivesWhatEachByteGivesAlone) {
  std::mt19937 engine(3);
  const auto below = [&engine](std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(engine);
  };
  for (int round = 0; round < 500; ++round) {
    std::string plain(below(200), '\0');
    std::generate(plain.begin(), plain.end(), [&] { return static_cast<char>(below(256)); });
    std::string expected = plain;
    for (std::size_t i = 1; i < expected.size(); i += 2) {
      expected[i] = static_cast<char>(expected[i] + 1);
    }
    std::string bytes = plain;
    const auto inBlocks = [&](auto change) {
      for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t count = std::min(1 + below(40), bytes.size() - at);
        change(std::span(bytes).subspan(at, count), at);
        at += count;
      }
    };
    inBlocks(ScrambleBytes);
    ASSERT_EQ(bytes, expected);
    inBlocks(UnscrambleBytes);
    ASSERT_EQ(bytes, plain);
  }
}

}  // namespace
}  // namespace zephin::test
