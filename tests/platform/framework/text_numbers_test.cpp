#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "platform/framework/text.h"

namespace zephin {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(Val, ReadsThePlainDecimalNumberThatTheTextBeginsWith) {
  const struct {
    String text;
    double number;
    std::int64_t whole;
  } rows[] = {
      {"", 0, 0},
      {" \t\r\n", 0, 0},
      {"12", 12, 12},
      {" \t\n-12.75x", -12.75, -12},
      {"+.5", 0.5, 0},
      {"5.", 5, 5},
      {".", 0, 0},
      {"-", 0, 0},
      {"- 5", 0, 0},
      {"--5", 0, 0},
      {"+-5", 0, 0},
      {"1,000", 1, 1},
      {"1.2.3", 1.2, 1},
      {"1e2", 100, 100},
      {"1E+2e3", 100, 100},
      {"125e-2", 1.25, 1},
      {"1e", 1, 1},
      {"1e+", 1, 1},
      {"1 e2", 1, 1},
      {"e2", 0, 0},
      {"0x10", 0, 0},
      {"&h10", 0, 0},
      {"inf", 0, 0},
      {"nan", 0, 0},
      {"-infinity", 0, 0},
      {"9223372036854775807", 9223372036854775808.0, kMax},
      {"9223372036854774784", 9223372036854774784.0, 9223372036854774784},
      {"-9223372036854775808", -9223372036854775808.0, kMin},
      {"1e400", kLargest, kMax},
      {"-1e400", -kLargest, kMin},
      {"1e-400", 0, 0},
      {"1e99999999999999999999", kLargest, kMax},
      {"1e+99999999999999999999", kLargest, kMax},
      {"-1e-99999999999999999999", 0, 0},
      {"0e99999999999999999999", 0, 0},
      {"." + String(std::string(400, '0'), Encoding::UTF8) + "1e500", 1e99, kMax},
      {"." + String(std::string(400, '0'), Encoding::UTF8) + "1e50", 0, 0},
      {String(std::string(400, '9'), Encoding::UTF8) + "e-1", kLargest, kMax},
      {String(std::string(400, '9'), Encoding::UTF8) + "e-399", 10, 10},
      {{std::string("1\0002", 3), Encoding::None}, 1, 1},
      {{std::string(" \0-\0001\0002\0\x32\x06", 10), Encoding::UTF16}, -12, -12},
      {"\uFF11", 0, 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Val(row.text), row.number) << row.text.Bytes();
    EXPECT_EQ(ValInteger(row.text), row.whole) << row.text.Bytes();
  }
}

TEST(Val, MegabytesOfDigitsAreReadAtOnce) {
  const std::string zeros(4'000'000, '0');
  EXPECT_EQ(Val(Utf8("1" + zeros + "e-4000000")), 1);
  EXPECT_EQ(Val(Utf8("1e" + zeros + "2")), 100);
}

TEST(Str, WritesTheWholeRange) {
  EXPECT_EQ(Str(kMin), "-9223372036854775808");
  EXPECT_EQ(Str(kMax), "9223372036854775807");
}

}  // namespace
}  // namespace zephin
