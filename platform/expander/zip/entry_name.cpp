#include "platform/expander/zip/entry_name.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/expander/common/text.h"

namespace zephin::expander {
namespace {

/// Characters 128 to 255 of code page 437.
constexpr std::array<char16_t, 128> kCodePage437 = {
    u'Ç', u'ü', u'é', u'â', u'ä', u'à', u'å', u'ç',     u'ê', u'ë', u'è', u'ï', u'î', u'ì', u'Ä',
    u'Å', u'É', u'æ', u'Æ', u'ô', u'ö', u'ò', u'û',     u'ù', u'ÿ', u'Ö', u'Ü', u'¢', u'£', u'¥',
    u'₧', u'ƒ', u'á', u'í', u'ó', u'ú', u'ñ', u'Ñ',     u'ª', u'º', u'¿', u'⌐', u'¬', u'½', u'¼',
    u'¡', u'«', u'»', u'░', u'▒', u'▓', u'│', u'┤',     u'╡', u'╢', u'╖', u'╕', u'╣', u'║', u'╗',
    u'╝', u'╜', u'╛', u'┐', u'└', u'┴', u'┬', u'├',     u'─', u'┼', u'╞', u'╟', u'╚', u'╔', u'╩',
    u'╦', u'╠', u'═', u'╬', u'╧', u'╨', u'╤', u'╥',     u'╙', u'╘', u'╒', u'╓', u'╫', u'╪', u'┘',
    u'┌', u'█', u'▄', u'▌', u'▐', u'▀', u'α', u'ß',     u'Γ', u'π', u'Σ', u'σ', u'µ', u'τ', u'Φ',
    u'Θ', u'Ω', u'δ', u'∞', u'φ', u'ε', u'∩', u'≡',     u'±', u'≥', u'≤', u'⌠', u'⌡', u'÷', u'≈',
    u'°', u'∙', u'·', u'√', u'ⁿ', u'²', u'■', u'\u00A0'};

bool IsUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = Utf8Length(text, i);
    if (length == 0) {
      return false;
    }
    i += length;
  }
  return true;
}

std::string FromCodePage437(std::string_view bytes) {
  std::string text;
  for (const char character : bytes) {
    const auto code = static_cast<std::uint8_t>(character);
    const std::uint32_t letter = code < 0x80 ? code : kCodePage437.at(code - 0x80U);
    if (letter < 0x80) {
      text += character;
    } else if (letter < 0x800) {
      text += static_cast<char>(0xC0U | letter >> 6U);
      text += static_cast<char>(0x80U | (letter & 0x3FU));
    } else {
      text += static_cast<char>(0xE0U | letter >> 12U);
      text += static_cast<char>(0x80U | (letter >> 6U & 0x3FU));
      text += static_cast<char>(0x80U | (letter & 0x3FU));
    }
  }
  return text;
}

bool IsLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// "/x", "\x", "C:/x", "C:\x"
bool IsAbsolute(std::string_view name) {
  const auto isSeparator = [](char character) { return character == '/' || character == '\\'; };
  return isSeparator(name[0]) ||
         (name.size() >= 3 && IsLetter(name[0]) && name[1] == ':' && isSeparator(name[2]));
}

/// Looks for a part ".." between slashes of either kind. A backslash is an ordinary character here,
/// but the tree may be copied to a system where it separates folders.
bool HasParentPart(std::string_view name) {
  while (true) {
    const std::size_t end = name.find_first_of("/\\");
    if (name.substr(0, end) == "..") {
      return true;
    }
    if (end == std::string_view::npos) {
      return false;
    }
    name.remove_prefix(end + 1);
  }
}

bool HasEmptyOrDotPart(std::string_view path) {
  return path == "." || path.starts_with("./") || path.ends_with("/.") ||
         path.find("//") != std::string_view::npos || path.find("/./") != std::string_view::npos;
}

std::string WithoutEmptyAndDotParts(std::string_view path) {
  std::string result;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('/'), path.size());
    const std::string_view part = path.substr(0, end);
    if (!part.empty() && part != ".") {
      result += result.empty() ? "" : "/";
      result += part;
    }
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return result;
}

}  // namespace

CleanName CleanEntryName(const GivenName& name, std::deque<std::string>& texts) {
  std::string_view text = name.unicode.value_or(name.stored);
  // Most writers on Linux and on the Mac store UTF-8 without declaring it.
  if (!name.unicode && !name.utf8 && !IsUtf8(text)) {
    text = texts.emplace_back(FromCodePage437(text));
  }
  if (name.separator == Separator::Backslash) {
    std::string& slashes = texts.emplace_back(text);
    std::replace(slashes.begin(), slashes.end(), '\\', '/');
    text = slashes;
  }
  CleanName clean;
  if (text.empty()) {
    clean.refusal = "the name is empty";
  } else if (text.find('\0') != std::string_view::npos) {
    // The system would end the name there.
    clean.refusal = "the name holds a NUL byte";
  } else if (IsAbsolute(text)) {
    clean.refusal = "the name is absolute";
  } else if (HasParentPart(text)) {
    clean.refusal = "the name leads out of the folder";
  }
  if (clean.refusal != nullptr) {
    return clean;
  }
  // The usual path needs no copy: it points into the table.
  clean.folder = text.ends_with('/');
  clean.path = clean.folder ? text.substr(0, text.size() - 1) : text;
  if (HasEmptyOrDotPart(clean.path) || clean.path.ends_with('/')) {
    clean.path = texts.emplace_back(WithoutEmptyAndDotParts(clean.path));
  }
  if (clean.path.empty() && !clean.folder) {
    clean.refusal = "the name is empty";
  }
  return clean;
}

}  // namespace zephin::expander
