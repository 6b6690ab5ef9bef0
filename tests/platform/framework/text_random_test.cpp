#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/framework/text.h"

// The string library against a plain search that decodes no bytes: it knows the characters from
// which the text was made. Beside it, what holds for any bytes at all.

namespace zephin {
namespace {

using namespace std::literals;
using enum Encoding;

/// The characters of some texts, each in its forms. No two may run together into another one.
struct Alphabet {
  Encoding encoding;
  std::vector<std::vector<std::string>> characters;
};

const std::vector<Alphabet> kAlphabets = {
    {None, {{"a", "A"}, {"|"}, {"\xC3"}, {"\xA9"}, {"\0"s}}},
    {UTF8, {{"a", "A"}, {"|"}, {"\u00E9", "\u00C9"}, {"\xFF"}, {"\xED"}}},
    {UTF8, {{"\u212A", "k", "K"}, {"s", "\u017F"}, {"\U00010400", "\U00010428"}, {"\xA0"}}},
    {MacRoman, {{"a", "A"}, {"\x8E", "\x83"}, {"\xC3"}, {"\xA9"}}},
    {UTF16, {{"a\0"s, "A\0"s}, {"\x01\xD8\x00\xDC"s, "\x01\xD8\x28\xDC"}, {"aa"}, {"\x02\xDC"}}},
};

/// A text, and the number of each of its characters in the alphabet.
struct RandomText {
  String text;
  std::vector<std::size_t> numbers;
};

class Dice {
 public:
  std::size_t Below(std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(engine_);
  }

  RandomText Text(const Alphabet& alphabet, std::size_t most) {
    std::vector<std::size_t> numbers(Below(most + 1));
    const std::size_t kinds = 1 + Below(alphabet.characters.size());
    std::string bytes;
    for (std::size_t& number : numbers) {
      number = Below(kinds);
      const auto& forms = alphabet.characters[number];
      bytes += forms[Below(forms.size())];
    }
    return {{bytes, alphabet.encoding}, numbers};
  }

  /// Any bytes, but few different ones, so that characters of several bytes are met.
  String Bytes(Encoding encoding, std::size_t most) {
    constexpr std::string_view kKinds = "|aAk\xC3\xA9\xD8\xDC\xE2\x84\xAA\xF0\x90\0"sv;
    std::string bytes(Below(most + 1), '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return kKinds[Below(kKinds.size())]; });
    return {bytes, encoding};
  }

 private:
  std::mt19937 engine_{20240229};  // NOLINT(cert-msc51-cpp): the same texts in every run
};

std::int64_t PlainFind(const std::vector<std::size_t>& haystack,
                       const std::vector<std::size_t>& needle, std::size_t start) {
  for (std::size_t i = start; !needle.empty() && i + needle.size() <= haystack.size(); ++i) {
    const auto place = haystack.begin() + static_cast<std::ptrdiff_t>(i);
    if (std::equal(needle.begin(), needle.end(), place)) {
      return static_cast<std::int64_t>(i) + 1;
    }
  }
  return 0;
}

TEST(RandomTexts, PositionsAreThoseOfThePlainSearch) {
  Dice dice;
  for (int round = 0; round < 5000; ++round) {
    const Alphabet& alphabet = kAlphabets[dice.Below(kAlphabets.size())];
    const RandomText haystack = dice.Text(alphabet, round % 8 == 0 ? 900 : 16);
    const RandomText needle = dice.Text(alphabet, 7);
    const std::size_t start = dice.Below(haystack.numbers.size() + 2);

    ASSERT_EQ(Len(haystack.text), static_cast<std::int64_t>(haystack.numbers.size())) << round;
    ASSERT_EQ(InStr(static_cast<std::int64_t>(start) + 1, haystack.text, needle.text),
              PlainFind(haystack.numbers, needle.numbers, start))
        << round << ": " << needle.text.Bytes() << " in " << haystack.text.Bytes();
  }
}

TEST(RandomTexts, CutAndJoinedNoByteIsLostInAnyBytes) {
  Dice dice;
  for (int round = 0; round < 4000; ++round) {
    const auto encoding = static_cast<Encoding>(round % 4);
    const String text = dice.Bytes(encoding, 40);
    const String separator = dice.Bytes(encoding, 3);
    String joined("", encoding);
    for (const String& field : Split(text, separator)) {
      ASSERT_EQ(InStr(field, separator), 0);
      joined += field;
      // The separator as it stands in the text: in letter case it may be another.
      const String cut = Mid(text, Len(joined) + 1, Len(separator));
      ASSERT_TRUE(cut.IsEmpty() || TextEquals(cut, separator));
      joined += cut;
    }
    ASSERT_EQ(joined, text);
    for (std::int64_t i = 1; i <= Len(text); ++i) {
      ASSERT_EQ(InStr(i, text, Mid(text, i, 1)), i) << round;
      ASSERT_EQ(Left(text, i) + Right(text, Len(text) - i), text) << round;
    }
  }
}

TEST(RandomTexts, ConvertedTheyComeBackAndWhatCannotBeConvertedIsLeftAlone) {
  Dice dice;
  int converted = 0;
  for (int round = 0; round < 4000; ++round) {
    const auto wanted = static_cast<Encoding>(dice.Below(4));
    const String text = dice.Bytes(static_cast<Encoding>(round % 4), 3);
    const String there = ConvertEncoding(text, wanted);
    if (text.DeclaredEncoding() == None || wanted == None || there == text) {
      ASSERT_EQ(there, text) << round;
    } else {
      ++converted;
      ASSERT_EQ(there.DeclaredEncoding(), wanted) << round;
      ASSERT_EQ(Len(there), Len(text)) << round;
      ASSERT_EQ(ConvertEncoding(there, text.DeclaredEncoding()), text) << round;
    }
  }
  EXPECT_GT(converted, 200);
}

}  // namespace
}  // namespace zephin
