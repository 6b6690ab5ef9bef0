#include "platform/framework/text/text_search.h"

#include <algorithm>
#include <cstring>

#include "platform/framework/text/case_folding.h"
#include "platform/framework/text/encodings.h"

namespace zephin {
namespace {

constexpr std::size_t kFirstBlock = 256;
constexpr std::size_t kLargestBlock = std::size_t{64} * 1024;

// The two non-ASCII characters that are forms of ASCII letters, as UTF-8.
constexpr std::string_view kLongS = "\xC5\xBF";
constexpr std::string_view kKelvinSign = "\xE2\x84\xAA";

/// Offset of `needle` in `bytes`; npos if there is none. The time is linear for any needle, unlike
/// that of std::string_view::find.
std::size_t FindIn(std::string_view bytes, std::string_view needle) {
  const void* found = memmem(bytes.data(), bytes.size(), needle.data(), needle.size());
  return found == nullptr
             ? std::string_view::npos
             : static_cast<std::size_t>(static_cast<const char*>(found) - bytes.data());
}

/// The encoding in which the needle is read: its own, or that of the searched text if one of the
/// two has none.
Encoding EncodingOfNeedle(const String& haystack, const String& needle) {
  const bool asBytes = haystack.DeclaredEncoding() == Encoding::None;
  return asBytes || needle.DeclaredEncoding() == Encoding::None ? haystack.DeclaredEncoding()
                                                                : needle.DeclaredEncoding();
}

std::vector<std::uint32_t> FoldedCharacters(std::string_view bytes, Encoding encoding) {
  std::vector<std::uint32_t> characters;
  for (std::size_t offset = 0; offset < bytes.size();) {
    const Character character = DecodeCharacter(bytes, offset, encoding);
    characters.push_back(FoldCharacter(character.code));
    offset += character.size;
  }
  return characters;
}

}  // namespace

TextSearch::TextSearch(const String& haystack, const String& needle)
    : haystack_(haystack.View()),
      encoding_(haystack.DeclaredEncoding()),
      needle_(FoldedCharacters(needle.View(), EncodingOfNeedle(haystack, needle))) {
  if (needle_.empty()) {
    return;
  }
  const bool needleIsAscii =
      std::all_of(needle_.begin(), needle_.end(), [](std::uint32_t code) { return code < 0x80; });
  const bool oneByteEach = encoding_ == Encoding::None || encoding_ == Encoding::MacRoman;
  if (oneByteEach || (encoding_ == Encoding::UTF8 && needleIsAscii)) {
    UseBytes();
  } else {
    UseCharacters();
  }
}

void TextSearch::UseBytes() {
  const ByteFolding& folding = FoldingOfBytes(encoding_);
  bool hasForms = false;
  for (const std::uint32_t character : needle_) {
    const auto byte = folding.ByteOf(character);
    if (!byte) {
      return;  // The encoding lacks this character, so that no text contains it.
    }
    needleBytes_ += static_cast<char>(*byte);
    hasForms = hasForms || folding.hasForms[*byte];
  }
  // For an ASCII letter ByteOf gives the capital, which is the lower byte.
  hasFormsBeyondAscii_ =
      encoding_ == Encoding::UTF8 && needleBytes_.find_first_of("KS") != std::string::npos;
  method_ = hasForms ? Method::FoldedBytes : Method::Bytes;
}

void TextSearch::UseCharacters() {
  borders_.assign(needle_.size(), 0);
  std::size_t border = 0;
  for (std::size_t i = 1; i < needle_.size(); ++i) {
    while (border > 0 && needle_[border] != needle_[i]) {
      border = borders_[border - 1];
    }
    if (needle_[border] == needle_[i]) {
      ++border;
    }
    borders_[i] = border;
  }
  begins_.assign(needle_.size(), 0);
  method_ = Method::Characters;
}

std::optional<TextMatch> TextSearch::FindFrom(std::size_t offset) {
  switch (method_) {
    case Method::Bytes:
      return FindBytes(offset);
    case Method::FoldedBytes:
      return FindFoldedBytes(offset);
    case Method::Characters:
      return FindCharacters(offset);
    default:
      return std::nullopt;
  }
}

std::optional<TextMatch> TextSearch::FindBytes(std::size_t offset) const {
  const std::size_t found = FindIn(haystack_.substr(offset), needleBytes_);
  if (found == std::string_view::npos) {
    return std::nullopt;
  }
  return TextMatch{offset + found, offset + found + needleBytes_.size()};
}

// Folds the text in blocks, small ones first since a match is often near. A block is kept for the
// next call.
std::optional<TextMatch> TextSearch::FindFoldedBytes(std::size_t offset) {
  // A non-ASCII form that the end of the block cuts has at most two bytes before the end.
  const std::size_t reach = needleBytes_.size() + kKelvinSign.size() - 1;
  while (haystack_.size() - offset >= needleBytes_.size()) {
    if (!BlockCovers(offset, reach)) {
      FoldBlockAt(offset, reach);
      if (hasFormsBeyondAscii_ && BlockHoldsFormsBeyondAscii()) {
        UseCharacters();
        return FindCharacters(offset);
      }
    }
    const std::size_t found =
        FindIn(std::string_view(block_).substr(offset - blockBegin_), needleBytes_);
    if (found != std::string_view::npos) {
      return TextMatch{offset + found, offset + found + needleBytes_.size()};
    }
    const std::size_t blockEnd = blockBegin_ + block_.size();
    if (blockEnd == haystack_.size()) {
      break;
    }
    offset = blockEnd - (reach - 1);
  }
  return std::nullopt;
}

bool TextSearch::BlockCovers(std::size_t offset, std::size_t reach) const {
  const std::size_t blockEnd = blockBegin_ + block_.size();
  return offset >= blockBegin_ && std::min(offset + reach, haystack_.size()) <= blockEnd;
}

void TextSearch::FoldBlockAt(std::size_t offset, std::size_t reach) {
  blockSize_ = std::clamp(blockSize_ * 2, kFirstBlock, kLargestBlock);
  const std::string_view bytes = haystack_.substr(offset, std::max(blockSize_, reach * 4));
  const auto& folded = FoldingOfBytes(encoding_).bytes;
  block_.resize(bytes.size());
  std::transform(bytes.begin(), bytes.end(), block_.begin(), [&folded](char byte) {
    return static_cast<char>(folded[static_cast<unsigned char>(byte)]);
  });
  blockBegin_ = offset;
}

bool TextSearch::BlockHoldsFormsBeyondAscii() const {
  return FindIn(block_, kLongS) != std::string_view::npos ||
         FindIn(block_, kKelvinSign) != std::string_view::npos;
}

// Knuth-Morris-Pratt, which decodes each character once.
std::optional<TextMatch> TextSearch::FindCharacters(std::size_t offset) {
  const std::size_t length = needle_.size();
  std::size_t matched = 0;
  for (std::size_t turn = 0; offset < haystack_.size(); turn = turn + 1 == length ? 0 : turn + 1) {
    const Character character = DecodeCharacter(haystack_, offset, encoding_);
    const std::uint32_t folded = FoldCharacter(character.code);
    begins_[turn] = offset;
    offset += character.size;
    while (matched > 0 && needle_[matched] != folded) {
      matched = borders_[matched - 1];
    }
    if (needle_[matched] == folded) {
      ++matched;
    }
    if (matched == length) {
      return TextMatch{begins_[turn + 1 == length ? 0 : turn + 1], offset};
    }
  }
  return std::nullopt;
}

}  // namespace zephin
