#include "setup/bundle_files.h"

#include <gtest/gtest.h>

#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

TEST(Scrambling, ResultDoesNotDependOnTheBlocks) {
  std::string plain;
  for (std::size_t i = 0; i < 1001; ++i) {
    plain += static_cast<char>(i * 7 + i / 256);
  }
  std::string scrambled = plain;
  for (std::size_t i = 1; i < plain.size(); i += 2) {
    scrambled[i] = static_cast<char>(plain[i] + 1);
  }
  for (std::size_t count = 1; count < 100; ++count) {
    std::string bytes = plain;
    const auto inBlocks = [&bytes, count](auto change) {
      for (std::size_t at = 0; at < bytes.size(); at += count) {
        change(std::span(bytes).subspan(at, std::min(count, bytes.size() - at)), at);
      }
    };
    inBlocks(ScrambleBytes);
    ASSERT_EQ(bytes, scrambled) << count;
    inBlocks(UnscrambleBytes);
    ASSERT_EQ(bytes, plain) << count;
  }
  StubRun run;
  run.BareWindow();
  // A label would have characters counted, not bytes.
  String text = Utf8(scrambled);
  ViewConst::DecryptStr(text);
  EXPECT_EQ(text.Bytes(), plain);
  EXPECT_EQ(ViewConst::Encrypt(text).Bytes(), scrambled);
}

}  // namespace
}  // namespace zephin::test
