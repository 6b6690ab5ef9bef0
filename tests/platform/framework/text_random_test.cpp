#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/framework/text.h"

// The string library against a plain one that knows only the few characters of these texts, as a
// list of pieces: no bytes are decoded, and whatever is searched is looked for at each place.

namespace zephin {
namespace {

using namespace std::literals;

/// A character of the texts, and the one that stands for all its forms.
struct Piece {
  std::string bytes;
  std::string folded;
};
using Pieces = std::vector<Piece>;

struct Alphabet {
  const char* name;
  Encoding encoding;
  Pieces pieces;
};

// No two pieces may run together into another character, whatever their order.
const Alphabet kAlphabets[] = {
    {"none",
     Encoding::None,
     {{"a", "a"}, {"A", "a"}, {"|", "|"}, {"\xC3", "\xC3"}, {"\xA9", "\xA9"}, {"\0"s, "\0"s}}},
    {"UTF-8 without other forms of ASCII",
     Encoding::UTF8,
     {{"a", "a"},
      {"K", "k"},
      {"|", "|"},
      {"\u00E9", "\u00E9"},
      {"\u00C9", "\u00E9"},
      {"\xFF", "\xFF"},
      {"\xED", "\xED"}}},
    {"UTF-8",
     Encoding::UTF8,
     {{"k", "k"},
      {"K", "k"},
      {"\u212A", "k"},
      {"s", "s"},
      {"\u017F", "s"},
      {"\U00010400", "\U00010428"},
      {"\U00010428", "\U00010428"},
      {"\xFF", "\xFF"},
      {"\x80", "\x80"}}},
    {"Mac Roman",
     Encoding::MacRoman,
     {{"a", "a"},
      {"A", "a"},
      {"\x8E", "\x8E"},
      {"\x83", "\x8E"},
      {"\xC3", "\xC3"},
      {"\xA9", "\xA9"}}},
    {"UTF-16",
     Encoding::UTF16,
     {{"a\0"s, "a"},
      {"A\0"s, "a"},
      {"\x01\xD8\x00\xDC"s, "I"},
      {"\x01\xD8\x28\xDC"s, "I"},
      {"\x61\x61", "\x61\x61"},
      {"\x02\xDC"s, "\x02\xDC"s}}},
};

class RandomTexts {
 public:
  Pieces Make(const Alphabet& alphabet, std::size_t most) {
    Pieces pieces(Below(most + 1));
    const std::size_t kinds = 1 + Below(alphabet.pieces.size());
    for (Piece& piece : pieces) {
      piece = alphabet.pieces[alphabet.pieces.size() - 1 - Below(kinds)];
    }
    return pieces;
  }
  std::size_t Below(std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(engine_);
  }

 private:
  std::mt19937 engine_{20240229};  // NOLINT(cert-msc51-cpp): the same texts in every run
};

String TextOf(const Pieces& pieces, Encoding encoding) {
  std::string bytes;
  for (const Piece& piece : pieces) {
    bytes += piece.bytes;
  }
  return {bytes, encoding};
}

std::size_t PlainFind(const Pieces& haystack, const Pieces& needle, std::size_t start) {
  const auto same = [](const Piece& a, const Piece& b) { return a.folded == b.folded; };
  for (std::size_t i = start; !needle.empty() && i + needle.size() <= haystack.size(); ++i) {
    if (std::equal(needle.begin(), needle.end(), haystack.begin() + static_cast<std::ptrdiff_t>(i),
                   same)) {
      return i + 1;
    }
  }
  return 0;
}

TEST(RandomTexts, PositionsAreThoseOfThePlainSearch) {
  RandomTexts random;
  for (int round = 0; round < 4000; ++round) {
    const Alphabet& alphabet = kAlphabets[random.Below(std::size(kAlphabets))];
    const Pieces haystack = random.Make(alphabet, round % 8 == 0 ? 900 : 12);
    const Pieces needle = random.Make(alphabet, 4);
    const String text = TextOf(haystack, alphabet.encoding);
    const String wanted = TextOf(needle, alphabet.encoding);
    const std::size_t start = random.Below(haystack.size() + 2);
    const auto position = InStr(static_cast<std::int64_t>(start) + 1, text, wanted);

    ASSERT_EQ(Len(text), static_cast<std::int64_t>(haystack.size())) << alphabet.name;
    ASSERT_EQ(position, static_cast<std::int64_t>(PlainFind(haystack, needle, start)))
        << alphabet.name << ": " << wanted.Bytes() << " in " << text.Bytes() << " from " << start;
    if (position > 0) {
      ASSERT_TRUE(TextEquals(Mid(text, position, Len(wanted)), wanted)) << alphabet.name;
    }
  }
}

String RandomBytes(RandomTexts& random, Encoding encoding, std::size_t most) {
  // Few different ones, so that characters and separators of several bytes are met.
  constexpr std::string_view kKinds = "|aAk\xC3\xA9\xD8\xDC\xE2\x84\xAA\xF0\x90\0"sv;
  std::string bytes(random.Below(most + 1), '\0');
  std::generate(bytes.begin(), bytes.end(), [&] { return kKinds[random.Below(kKinds.size())]; });
  return {bytes, encoding};
}

TEST(RandomTexts, CutAndJoinedNoByteIsLost) {
  RandomTexts random;
  for (int round = 0; round < 4000; ++round) {
    const auto encoding = static_cast<Encoding>(round % 4);
    const String text = RandomBytes(random, encoding, 60);
    const String separator = RandomBytes(random, encoding, 3);
    String joined("", encoding);
    for (const String& field : Split(text, separator)) {
      ASSERT_EQ(InStr(field, separator), 0);
      joined += field;
      // The separator as it stands in the text: in letter case it may be another.
      const String cut = Mid(text, Len(joined) + 1, Len(separator));
      if (joined.Size() < text.Size()) {
        ASSERT_TRUE(TextEquals(cut, separator));
      }
      joined += cut;
    }
    ASSERT_EQ(joined, text);
  }
}

TEST(RandomTexts, EveryCharacterIsFoundAtItsOwnPosition) {
  RandomTexts random;
  for (int round = 0; round < 4000; ++round) {
    const auto encoding = static_cast<Encoding>(round % 4);
    const String text = RandomBytes(random, encoding, 30);
    String joined("", encoding);
    for (std::int64_t i = 1; i <= Len(text); ++i) {
      const String character = Mid(text, i, 1);
      ASSERT_EQ(InStr(i, text, character), i) << round;
      ASSERT_EQ(Left(text, i) + Right(text, Len(text) - i), text);
      joined += character;
    }
    ASSERT_EQ(joined, text);
  }
}

}  // namespace
}  // namespace zephin
