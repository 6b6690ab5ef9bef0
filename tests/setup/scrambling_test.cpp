#include "setup/scrambling.h"

#include <gtest/gtest.h>

#include <random>

#include "setup/scrambling_bytes.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

TEST(Scrambling, AnyCutIntoBlocksGivesWhatEachByteGivesAlone) {
  StubRun run;
  run.BareWindow();
  std::mt19937 engine(3);
  const auto below = [&engine](std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(engine);
  };
  for (int round = 0; round < 500; ++round) {
    std::string plain(below(200), '\0');
    std::generate(plain.begin(), plain.end(), [&] { return static_cast<char>(below(256)); });
    std::string scrambled = plain;
    for (std::size_t i = 1; i < plain.size(); i += 2) {
      scrambled[i] = static_cast<char>(plain[i] + 1);
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
    ASSERT_EQ(bytes, scrambled);
    inBlocks(UnscrambleBytes);
    ASSERT_EQ(bytes, plain);
    // A label would have characters counted, not bytes.
    String text = Utf8(scrambled);
    ViewConst::DecryptStr(text);
    ASSERT_EQ(text.Bytes(), plain);
    ASSERT_EQ(ViewConst::Encrypt(text).Bytes(), scrambled);
  }
}

}  // namespace
}  // namespace zephin::test
