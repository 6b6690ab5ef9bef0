#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "platform/framework/text.h"

namespace zephin {
namespace {

using namespace std::literals;

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(Val, ReadsThePlainDecimalNumberThatTheTextBeginsWith) {
  const std::vector<std::pair<String, double>> rows = {
      {" \t\r\n-12.75x", -12.75},
      {"+.5", 0.5},
      {"5.", 5},
      {"1E+2e3", 100},
      {"125e-2", 1.25},
      {"1e+", 1},
      {{"1\0002"s, Encoding::None}, 1},
      {{" \0-\0001\0002\0\x32\x06"s, Encoding::UTF16}, -12},
  };
  for (const auto& [text, number] : rows) {
    EXPECT_EQ(Val(text), number) << text.Bytes();
  }
  for (const char* text :
       {"", ".", "-", "- 5", "--5", "e2", "0x10", "&h10", "inf", "nan", "-infinity", "\uFF11"}) {
    EXPECT_EQ(Val(text), 0) << text;
  }
}

TEST(Val, WhatTheResultCannotHoldBecomesItsLargestNumberOrZero) {
  const std::string zeros(400, '0');
  const std::vector<std::tuple<std::string, double, std::int64_t>> rows = {
      {"9223372036854775807", 9223372036854775808.0, kMax},
      {"9223372036854774784", 9223372036854774784.0, 9223372036854774784},
      {"-9223372036854775808", -9223372036854775808.0, kMin},
      {"1e400", kLargest, kMax},
      {"-1e400", -kLargest, kMin},
      {"1e-400", 0, 0},
      {"1e+99999999999999999999", kLargest, kMax},
      {"-1e-99999999999999999999", 0, 0},
      {"0e99999999999999999999", 0, 0},
      {"." + zeros + "1e500", 1e99, kMax},
      {"1" + zeros + "e-399", 10, 10},
      {"-1.9" + std::string(4'000'000, '0'), -1.9, -1},
      {"1e" + std::string(4'000'000, '0') + "2", 100, 100},
  };
  for (const auto& [text, number, whole] : rows) {
    EXPECT_EQ(Val(Utf8(text)), number) << text;
    EXPECT_EQ(ValInteger(Utf8(text)), whole) << text;
  }
}

}  // namespace
}  // namespace zephin
