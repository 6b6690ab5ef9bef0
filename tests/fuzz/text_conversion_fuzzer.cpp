// Transcodes, joins and replaces in texts of any bytes, and reads numbers from them. Finds lost
// characters, and answers that differ from a plain working-out.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "platform/framework/application.h"
#include "platform/framework/text.h"
#include "platform/framework/text/case_folding.h"
#include "platform/framework/text/mac_roman.h"
#include "tests/fuzz/any_text.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/plain_text.h"
#include "tests/support/quiet_desktop.h"
#include "util/texts.h"

namespace zephin::test {
namespace {

using Codes = std::vector<std::uint32_t>;
using enum Encoding;

Codes CodesOf(const String& text) {
  Codes codes;
  for (const auto& character : PlainCharacters(text.View(), text.DeclaredEncoding())) {
    codes.push_back(character.code);
  }
  return codes;
}

bool AllIn(const String& text, Encoding encoding) {
  return std::ranges::all_of(CodesOf(text), [encoding](std::uint32_t code) {
    return IsScalar(code) && (encoding != MacRoman || EncodeMacRoman(code));
  });
}

bool IsSame(const String& a, const String& b) {
  return a == b && a.DeclaredEncoding() == b.DeclaredEncoding();
}

void CheckConversion(const String& text, Encoding encoding) {
  const String converted = ConvertEncoding(text, encoding);
  if (text.DeclaredEncoding() == None || encoding == None) {
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
  const auto inUtf8 = [](const String& text) { return ConvertEncoding(text, UTF8).Bytes(); };
  if (a.DeclaredEncoding() == b.DeclaredEncoding() || a.DeclaredEncoding() == None ||
      b.DeclaredEncoding() == None) {
    Require(joined.Bytes() == a.Bytes() + b.Bytes());
  } else if (AllIn(a, UTF8) && AllIn(b, UTF8)) {
    Require(inUtf8(joined) == inUtf8(a) + inUtf8(b));
  }
}

void CheckReplacement(const String& text, const String& ch1, const String& ch2) {
  const String roman = ConvertEncoding(text, MacRoman);
  const String wanted = ConvertEncoding(ch1, MacRoman);
  std::string expected = roman.Bytes();
  if (wanted.Size() == 1 && !ch2.IsEmpty()) {
    const std::uint32_t folded = FoldCharacter(CodesOf(wanted).front());
    const unsigned bound = roman.DeclaredEncoding() == MacRoman ? 0x100 : 0x80;
    for (char& byte : expected) {
      const auto value = static_cast<unsigned char>(byte);
      if (value < bound && FoldCharacter(DecodeMacRoman(value)) == folded) {
        byte = ch2.Bytes().front();
      }
    }
  }
  expected.resize(std::min(expected.find('\0'), expected.size()));
  Require(ViewConst::ReplaceCh1WithCh2(text, ch1, ch2).Bytes() == expected);
}

/// The C library reads the same numbers, and a few forms more.
void CheckNumber(const String& text) {
  const double number = Val(text);
  Require(std::isfinite(number));
  const std::int64_t whole = ValInteger(text);
  Require(std::abs(number) >= 9e18 ? (whole < 0) == (number < 0)
                                   : whole == static_cast<std::int64_t>(number));
  Require(ValInteger(Str(whole)) == whole || std::abs(number) > 9e15);
  const bool plain = text.Bytes().find_first_of("xXiInN") == std::string::npos;
  if (plain && text.DeclaredEncoding() != UTF16) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    Require(number == std::clamp(std::strtod(text.CString(), nullptr), -kLargest, kLargest));
  }
}

/// A text of characters that all stand in the encoding.
String ValidText(FuzzedDataProvider& data) {
  const auto encoding = static_cast<Encoding>(data.ConsumeIntegralInRange(1, 3));
  String text;
  for (int i = data.ConsumeIntegralInRange(0, 20); i > 0; --i) {
    text += data.ConsumeBool() ? Chr(DecodeMacRoman(data.ConsumeIntegral<std::uint8_t>()))
                               : Chr(data.ConsumeIntegralInRange<std::uint32_t>(0, 0x110000));
  }
  return ConvertEncoding(text, encoding);
}

}  // namespace

void TryInput(std::string_view input) {
  FuzzedDataProvider data(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
  static QuietDesktop desktop;
  static const Application kApplication(desktop, {});
  const String a = data.ConsumeBool() ? ValidText(data) : AnyText(data, 300);
  const String b = data.ConsumeBool() ? ValidText(data) : AnyText(data, 20);
  for (const Encoding encoding : {None, UTF8, MacRoman, UTF16}) {
    CheckConversion(a, encoding);
  }
  CheckJoin(a, b);
  CheckJoin(b, a);
  CheckReplacement(a, Mid(b, 1, 1), AnyText(data, 2));
  CheckReplacement(a, Mid(a, data.ConsumeIntegralInRange(1, 30), 1), b);
  CheckNumber(a);
  const auto code = data.ConsumeIntegral<std::uint32_t>() % 0x120000;
  Require(Chr(code).Bytes() == (IsScalar(code) ? PlainUtf8(code) : ""));
  Require(!IsScalar(code) || Asc(Chr(code)) == code);
}

}  // namespace zephin::test
