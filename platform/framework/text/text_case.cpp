#include <string>
#include <utility>

#include "platform/framework/text.h"
#include "platform/framework/text/case_folding.h"
#include "platform/framework/text/encodings.h"

namespace zephin {
namespace {

/// The text with each character mapped; a character whose other form the encoding lacks stays.
String Mapped(const String& text, std::uint32_t (*map)(std::uint32_t)) {
  const Encoding encoding = text.DeclaredEncoding();
  std::string mapped;
  mapped.reserve(text.Size());
  for (std::size_t offset = 0; offset < text.Size();) {
    const Character character = DecodeCharacter(text.View(), offset, encoding);
    if (!AppendCharacter(mapped, map(character.code), encoding)) {
      mapped.append(text.View().substr(offset, character.size));
    }
    offset += character.size;
  }
  return {std::move(mapped), encoding};
}

/// The encoding in which `text` is compared: if it has none, that of the other text.
Encoding EncodingBeside(const String& text, const String& other) {
  return text.DeclaredEncoding() == Encoding::None ? other.DeclaredEncoding()
                                                   : text.DeclaredEncoding();
}

int CompareCharacters(const String& a, const String& b) {
  const Encoding encodingOfA = EncodingBeside(a, b);
  const Encoding encodingOfB = EncodingBeside(b, a);
  std::size_t offsetInA = 0;
  std::size_t offsetInB = 0;
  while (offsetInA < a.Size() && offsetInB < b.Size()) {
    const Character inA = DecodeCharacter(a.View(), offsetInA, encodingOfA);
    const Character inB = DecodeCharacter(b.View(), offsetInB, encodingOfB);
    // Folding costs a table search; most characters of equal texts are the same as they are.
    if (inA.code != inB.code) {
      const std::uint32_t foldedA = FoldCharacter(inA.code);
      const std::uint32_t foldedB = FoldCharacter(inB.code);
      if (foldedA != foldedB) {
        return foldedA < foldedB ? -1 : 1;
      }
    }
    offsetInA += inA.size;
    offsetInB += inB.size;
  }
  // The longer text is the greater one.
  return static_cast<int>(offsetInA < a.Size()) - static_cast<int>(offsetInB < b.Size());
}

}  // namespace

String Uppercase(const String& text) {
  return Mapped(text, UpperCharacter);
}

String Lowercase(const String& text) {
  return Mapped(text, LowerCharacter);
}

int StrComp(const String& a, const String& b, int mode) {
  if (mode == 0) {
    return a.View().compare(b.View());
  }
  // Equal bytes in two encodings may be different characters.
  const bool sameCharacters = a == b && EncodingBeside(a, b) == EncodingBeside(b, a);
  return sameCharacters ? 0 : CompareCharacters(a, b);
}

bool TextEquals(const String& a, const String& b) {
  return StrComp(a, b, 1) == 0;
}

}  // namespace zephin
