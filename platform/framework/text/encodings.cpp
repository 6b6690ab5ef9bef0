#include "platform/framework/text/encodings.h"

#include <iconv.h>
#include <utf8proc.h>

#include <array>
#include <cstdint>
#include <cstring>

#include "platform/framework/text/mac_roman.h"

namespace zephin {
namespace {

/// Characters from here on are two units in UTF-16.
constexpr std::uint32_t kFirstSupplementary = 0x10000;

std::uint32_t ByteAt(std::string_view bytes, std::size_t offset) {
  return static_cast<unsigned char>(bytes[offset]);
}

Character DecodeUtf8(std::string_view bytes, std::size_t offset) {
  utf8proc_int32_t code = 0;
  const utf8proc_ssize_t size =
      utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(bytes.data()) + offset,
                       static_cast<utf8proc_ssize_t>(bytes.size() - offset), &code);
  // An invalid byte is a character by itself, so that no text is rejected and positions still
  // count.
  if (size <= 0) {
    return {kRawByte + ByteAt(bytes, offset), 1};
  }
  return {static_cast<std::uint32_t>(code), static_cast<std::size_t>(size)};
}

bool IsHighSurrogate(std::uint32_t unit) {
  return (unit & 0xFC00U) == 0xD800U;
}

bool IsLowSurrogate(std::uint32_t unit) {
  return (unit & 0xFC00U) == 0xDC00U;
}

std::uint32_t Utf16Unit(std::string_view bytes, std::size_t offset) {
  return ByteAt(bytes, offset) | ByteAt(bytes, offset + 1) << 8U;
}

Character DecodeUtf16(std::string_view bytes, std::size_t offset) {
  const std::size_t left = bytes.size() - offset;
  if (left < 2) {
    return {kRawByte + ByteAt(bytes, offset), 1};
  }
  const std::uint32_t unit = Utf16Unit(bytes, offset);
  if (IsHighSurrogate(unit) && left >= 4) {
    const std::uint32_t next = Utf16Unit(bytes, offset + 2);
    if (IsLowSurrogate(next)) {
      return {kFirstSupplementary + ((unit & 0x3FFU) << 10U) + (next & 0x3FFU), 4};
    }
  }
  // A surrogate without its partner is kept as it is: converting back must give the same bytes.
  return {unit, 2};
}

void AppendUtf8(std::string& bytes, std::uint32_t code) {
  std::array<utf8proc_uint8_t, 4> buffer{};
  const utf8proc_ssize_t size =
      utf8proc_encode_char(static_cast<utf8proc_int32_t>(code), buffer.data());
  bytes.append(buffer.begin(), buffer.begin() + size);
}

void AppendUtf16Unit(std::string& bytes, std::uint32_t unit) {
  bytes += static_cast<char>(unit & 0xFFU);
  bytes += static_cast<char>(unit >> 8U);
}

void AppendUtf16(std::string& bytes, std::uint32_t code) {
  if (code < kFirstSupplementary) {
    AppendUtf16Unit(bytes, code);
    return;
  }
  AppendUtf16Unit(bytes, 0xD800U + ((code - kFirstSupplementary) >> 10U));
  AppendUtf16Unit(bytes, 0xDC00U + (code & 0x3FFU));
}

/// Conversion by the C library, which rejects invalid bytes.
class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (IsOpen()) {
      iconv_close(handle_);
    }
  }

  std::optional<std::string> Convert(std::string_view bytes) {
    // No text more than doubles in size between UTF-8 and UTF-16.
    std::string converted(bytes.size() * 2, '\0');
    char* in = const_cast<char*>(bytes.data());  // iconv only reads it
    std::size_t inLeft = bytes.size();
    char* out = converted.data();
    std::size_t outLeft = converted.size();
    // A result above 0 counts characters that were replaced, which is a loss like any error.
    if (!IsOpen() || iconv(handle_, &in, &inLeft, &out, &outLeft) != 0) {
      return std::nullopt;
    }
    converted.resize(converted.size() - outLeft);
    return converted;
  }

 private:
  bool IsOpen() const {
    // iconv_open returns -1 as a pointer if it fails.
    return reinterpret_cast<std::intptr_t>(handle_) != -1;
  }

  iconv_t handle_;
};

/// Conversion character by character, for pairs with Mac Roman (mac_roman.h has the reason). Mac
/// Roman cannot represent raw bytes, so that an invalid text is rejected here, too.
std::optional<std::string> TranscodeCharacters(std::string_view bytes, Encoding from, Encoding to) {
  std::string converted;
  converted.reserve(bytes.size());
  for (std::size_t offset = 0; offset < bytes.size();) {
    const Character character = DecodeCharacter(bytes, offset, from);
    if (!AppendCharacter(converted, character.code, to)) {
      return std::nullopt;
    }
    offset += character.size;
  }
  return converted;
}

}  // namespace

Character DecodeCharacter(std::string_view bytes, std::size_t offset, Encoding encoding) {
  const std::uint32_t byte = ByteAt(bytes, offset);
  if (encoding == Encoding::UTF16) {
    return DecodeUtf16(bytes, offset);
  }
  // The fast case, and the same in all the other encodings.
  if (byte < 0x80) {
    return {byte, 1};
  }
  switch (encoding) {
    case Encoding::UTF8:
      return DecodeUtf8(bytes, offset);
    case Encoding::MacRoman:
      return {DecodeMacRoman(static_cast<unsigned char>(byte)), 1};
    default:
      return {kRawByte + byte, 1};
  }
}

bool AppendCharacter(std::string& bytes, std::uint32_t code, Encoding encoding) {
  if (code >= kRawByte && encoding != Encoding::MacRoman) {
    bytes += static_cast<char>(code - kRawByte);
    return true;
  }
  switch (encoding) {
    case Encoding::UTF8:
      AppendUtf8(bytes, code);
      return true;
    case Encoding::UTF16:
      AppendUtf16(bytes, code);
      return true;
    case Encoding::MacRoman:
      if (const auto byte = EncodeMacRoman(code)) {
        bytes += static_cast<char>(*byte);
        return true;
      }
      return false;
    default:
      // Bytes without an encoding have only their ASCII part in common with other texts.
      if (code < 0x80) {
        bytes += static_cast<char>(code);
      }
      return code < 0x80;
  }
}

std::size_t AsciiRun(std::string_view bytes, std::size_t offset) {
  // Eight bytes at a time: long ASCII texts are the common case.
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::size_t end = offset;
  for (std::uint64_t word = 0; bytes.size() - end >= sizeof word; end += sizeof word) {
    std::memcpy(&word, bytes.data() + end, sizeof word);
    if ((word & kHighBits) != 0) {
      break;
    }
  }
  while (end < bytes.size() && ByteAt(bytes, end) < 0x80) {
    ++end;
  }
  return end - offset;
}

bool IsAscii(std::string_view bytes) {
  return AsciiRun(bytes, 0) == bytes.size();
}

std::size_t CountCharacters(std::string_view bytes, Encoding encoding) {
  // One byte for each character.
  if (encoding == Encoding::None || encoding == Encoding::MacRoman) {
    return bytes.size();
  }
  std::size_t count = 0;
  for (std::size_t offset = 0; offset < bytes.size(); ++count) {
    if (encoding == Encoding::UTF8) {
      const std::size_t run = AsciiRun(bytes, offset);
      count += run;
      offset += run;
      if (offset == bytes.size()) {
        break;
      }
    }
    offset += DecodeCharacter(bytes, offset, encoding).size;
  }
  return count;
}

std::size_t OffsetOfCharacter(std::string_view bytes, Encoding encoding, std::size_t index) {
  if (encoding == Encoding::None || encoding == Encoding::MacRoman) {
    return index < bytes.size() ? index : bytes.size();
  }
  std::size_t offset = 0;
  while (index > 0 && offset < bytes.size()) {
    const std::size_t run =
        // Limited to `index` bytes: the run may have more characters than are wanted.
        encoding == Encoding::UTF8 ? AsciiRun(bytes.substr(0, offset + index), offset) : 0;
    if (run > 0) {
      offset += run;
      index -= run;
    } else {
      offset += DecodeCharacter(bytes, offset, encoding).size;
      --index;
    }
  }
  return offset;
}

std::optional<std::string> Transcode(std::string_view bytes, Encoding from, Encoding to) {
  if (from == Encoding::UTF8 && to == Encoding::UTF16) {
    return Converter("UTF-16LE", "UTF-8").Convert(bytes);
  }
  if (from == Encoding::UTF16 && to == Encoding::UTF8) {
    return Converter("UTF-8", "UTF-16LE").Convert(bytes);
  }
  return TranscodeCharacters(bytes, from, to);
}

}  // namespace zephin
