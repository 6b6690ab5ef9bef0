// Searches, cuts, compares, converts and joins texts of any bytes in any encodings. Finds results
// that differ from those of code that processes one character after the other.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "platform/framework/text.h"
#include "platform/framework/text/case_folding.h"
#include "platform/framework/text/mac_roman.h"
#include "tests/fuzz/any_text.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/plain_text.h"
#include "util/paths.h"

namespace zephin::test {
namespace {

using Folded = std::vector<std::uint32_t>;

Folded FoldedCharacters(const String& text, Encoding encoding) {
  Folded folded;
  for (const PlainCharacter& character : PlainCharacters(text.View(), encoding)) {
    folded.push_back(FoldCharacter(character.code));
  }
  return folded;
}

/// The encoding of a text that is used with another one. One without an encoding takes the other's.
Encoding EncodingBeside(const String& text, const String& other) {
  return (text.DeclaredEncoding() == Encoding::None ? other : text).DeclaredEncoding();
}

/// A text to be searched and the text to search for, as characters.
struct Search {
  Search(const String& searched, const String& wanted)
      : text(searched),
        characters(PlainCharacters(searched.View(), searched.DeclaredEncoding())),
        haystack(FoldedCharacters(searched, searched.DeclaredEncoding())),
        // A text without an encoding is searched by bytes.
        needle(FoldedCharacters(wanted, searched.DeclaredEncoding() == Encoding::None
                                            ? Encoding::None
                                            : EncodingBeside(wanted, searched))) {}

  /// Index of the first match at or after `start`; the number of characters if there is none.
  std::size_t Find(std::size_t start) const {
    const auto begin =
        haystack.begin() + static_cast<std::ptrdiff_t>(std::min(start, haystack.size()));
    const auto found = std::search(begin, haystack.end(), needle.begin(), needle.end());
    return needle.empty() ? haystack.size() : static_cast<std::size_t>(found - haystack.begin());
  }

  /// The characters from one index up to another.
  std::string Part(std::size_t begin, std::size_t end) const {
    const auto offset = [this](std::size_t index) {
      return index == 0 ? 0 : characters[std::min(index, characters.size()) - 1].end;
    };
    return characters.empty() ? ""
                              : text.Bytes().substr(offset(begin), offset(end) - offset(begin));
  }

  const String& text;
  std::vector<PlainCharacter> characters;
  Folded haystack;
  Folded needle;
};

std::int64_t Signed(std::size_t number) {
  return static_cast<std::int64_t>(number);
}

void CheckPositions(const Search& search, const String& needle, std::size_t start) {
  const std::size_t found = search.Find(start);
  const std::int64_t position = found == search.haystack.size() ? 0 : Signed(found) + 1;
  Require(InStr(Signed(start) + 1, search.text, needle) == position);
  const std::string& bytes = search.text.Bytes();
  const std::size_t byte = needle.IsEmpty() ? std::string::npos : bytes.find(needle.View(), start);
  Require(InStrB(Signed(start) + 1, search.text, needle) ==
          (byte == std::string::npos ? 0 : Signed(byte) + 1));
}

void CheckFields(const Search& search, const String& separator) {
  std::vector<std::string> fields;
  std::size_t begin = 0;
  for (std::size_t end = 0; (end = search.Find(begin)) < search.haystack.size();) {
    fields.push_back(search.Part(begin, end));
    begin = end + search.needle.size();
  }
  fields.push_back(search.Part(begin, search.haystack.size()));
  Require(CountFields(search.text, separator) == std::ssize(fields));
  const Array<String> split = Split(search.text, separator);
  Require(split.Count() == (search.text.IsEmpty() ? 0 : std::ssize(fields)));
  for (std::int64_t i = 0; i < split.Count(); ++i) {
    Require(split(i).Bytes() == fields[static_cast<std::size_t>(i)]);
    Require(split(i).DeclaredEncoding() == search.text.DeclaredEncoding());
  }
  const std::size_t middle = fields.size() / 2;
  Require(NthField(search.text, separator, Signed(middle) + 1).Bytes() == fields[middle]);
  Require(NthField(search.text, separator, std::ssize(fields) + 1).IsEmpty());
}

void CheckParts(const Search& search, std::size_t start, std::size_t count) {
  const std::size_t length = search.haystack.size();
  const String& text = search.text;
  Require(Len(text) == Signed(length));
  Require(Mid(text, Signed(start) + 1, Signed(count)).Bytes() == search.Part(start, start + count));
  Require(Mid(text, Signed(start) + 1).Bytes() == search.Part(start, length));
  Require(Left(text, Signed(count)).Bytes() == search.Part(0, count));
  Require(Right(text, Signed(count)).Bytes() ==
          search.Part(length - std::min(count, length), length));
}

void CheckComparison(const String& a, const String& b) {
  const auto sign = [](int number) { return (number > 0) - (number < 0); };
  const Folded foldedA = FoldedCharacters(a, EncodingBeside(a, b));
  const Folded foldedB = FoldedCharacters(b, EncodingBeside(b, a));
  const int order = foldedA < foldedB ? -1 : static_cast<int>(foldedB < foldedA);
  Require(sign(StrComp(a, b, 1)) == order);
  Require(TextEquals(b, a) == (order == 0));
  Require(sign(StrComp(a, b, 0)) == sign(a.Bytes().compare(b.Bytes())));
  Require(Len(Uppercase(a)) == Len(a) && Len(Lowercase(a)) == Len(a));
}

Folded CodesOf(const String& text) {
  Folded codes;
  for (const auto& character : PlainCharacters(text.View(), text.DeclaredEncoding())) {
    codes.push_back(character.code);
  }
  return codes;
}

/// Whether the encoding has all characters of the text.
bool AllIn(const String& text, Encoding encoding) {
  return std::ranges::all_of(CodesOf(text), [encoding](std::uint32_t code) {
    return IsScalar(code) && (encoding != Encoding::MacRoman || EncodeMacRoman(code));
  });
}

bool IsSame(const String& a, const String& b) {
  return a == b && a.DeclaredEncoding() == b.DeclaredEncoding();
}

void CheckConversion(const String& text, Encoding encoding) {
  const String converted = ConvertEncoding(text, encoding);
  if (text.DeclaredEncoding() == Encoding::None || encoding == Encoding::None) {
    Require(IsSame(converted, DefineEncoding(text, encoding)));
  } else if (AllIn(text, encoding)) {
    Require(converted.DeclaredEncoding() == encoding);
    Require(CodesOf(converted) == CodesOf(text));
    Require(IsSame(ConvertEncoding(converted, text.DeclaredEncoding()), text));
  } else {
    Require(IsSame(converted, text));
  }
}

void CheckJoin(const String& a, const String& b) {
  const String joined = a + b;
  const auto inUtf8 = [](const String& text) {
    return ConvertEncoding(text, Encoding::UTF8).Bytes();
  };
  if (EncodingBeside(a, b) == EncodingBeside(b, a)) {
    Require(joined.Bytes() == a.Bytes() + b.Bytes());
  } else if (AllIn(a, Encoding::UTF8) && AllIn(b, Encoding::UTF8)) {
    Require(inUtf8(joined) == inUtf8(a) + inUtf8(b));
  }
}

void CheckPaths(const String& path) {
  using namespace ViewConst;
  Require(ExtractFilePath(path) + ExtractFileName(path) == path);
  Require(ChangeFileExt(path, ExtractFileExt(path)) == path);
  Require(path.View().starts_with(MyExtractFilePath(path).View()));
}

/// A text to search for: any, or a part of the searched one in any letter case and encoding.
String AnyNeedle(FuzzedDataProvider& data, const String& haystack) {
  const int form = data.ConsumeIntegralInRange(0, 4);
  if (form == 0) {
    return AnyText(data, 40);
  }
  const String part =
      Mid(haystack, data.ConsumeIntegralInRange(0, 300), data.ConsumeIntegralInRange(0, 12));
  const String formed = form == 1 ? Uppercase(part) : form == 2 ? Lowercase(part) : part;
  const auto encoding = static_cast<Encoding>(data.ConsumeIntegralInRange(0, 3));
  return form == 4 ? ConvertEncoding(formed, encoding) : formed;
}

}  // namespace

void TryInput(std::string_view input) {
  FuzzedDataProvider data(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
  // Longer than several of the blocks in which a text is searched.
  String text = AnyText(data, 300);
  for (int doublings = data.ConsumeIntegralInRange(0, 4); doublings > 0; --doublings) {
    text += String(text);
  }
  const String needle = AnyNeedle(data, text);
  const Search search(text, needle);
  const auto start = data.ConsumeIntegralInRange<std::size_t>(0, 2000);
  CheckPositions(search, needle, start);
  CheckFields(search, needle);
  CheckParts(search, start, data.ConsumeIntegralInRange<std::size_t>(0, 100));
  CheckComparison(text, needle);
  CheckComparison(text, AnyNeedle(data, text));
  CheckPaths(text);
  for (const Encoding encoding :
       {Encoding::None, Encoding::UTF8, Encoding::MacRoman, Encoding::UTF16}) {
    CheckConversion(text, encoding);
  }
  CheckJoin(text, needle);
  CheckJoin(needle, text);
  Require(std::isfinite(Val(text)));
}

}  // namespace zephin::test
