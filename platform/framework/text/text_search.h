#ifndef PLATFORM_FRAMEWORK_TEXT_TEXT_SEARCH_H_
#define PLATFORM_FRAMEWORK_TEXT_TEXT_SEARCH_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/framework/string.h"

namespace zephin {

/// A match, as byte offsets in the searched text: [begin, end). It may be longer or shorter than
/// the needle, since the forms of a letter differ in size.
struct TextMatch {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// Searches for one needle in one text, ignoring letter case, any number of times. The time for all
/// matches grows with the length of the text, not with that of the needle. The text must outlive
/// the search; the needle need not.
class TextSearch {
 public:
  TextSearch(const String& haystack, const String& needle);

  /// The first match at or after `offset`, which must be the beginning of a character or the end of
  /// the text. Nothing if there is none or the needle is empty.
  std::optional<TextMatch> FindFrom(std::size_t offset);

 private:
  /// How the text is searched: not at all, since it cannot contain the needle; by bytes, exactly or
  /// folded; or by decoded characters, the slowest way.
  enum class Method { Nothing, Bytes, FoldedBytes, Characters };

  void UseBytes();
  void UseCharacters();
  std::optional<TextMatch> FindBytes(std::size_t offset) const;
  std::optional<TextMatch> FindFoldedBytes(std::size_t offset);
  std::optional<TextMatch> FindCharacters(std::size_t offset);
  bool BlockCovers(std::size_t offset, std::size_t reach) const;
  void FoldBlockAt(std::size_t offset, std::size_t reach);
  bool BlockHoldsFormsBeyondAscii() const;

  std::string_view haystack_;
  Encoding encoding_;
  Method method_ = Method::Nothing;
  /// The folded characters of the needle.
  std::vector<std::uint32_t> needle_;
  /// The needle as folded bytes of the text's encoding, for the two methods that compare bytes.
  std::string needleBytes_;
  /// Whether non-ASCII characters of the text may be forms of letters in the needle.
  bool hasFormsBeyondAscii_ = false;

  /// Folded bytes of the text from offset `blockBegin_` on; kept between calls.
  std::string block_;
  std::size_t blockBegin_ = 0;
  std::size_t blockSize_ = 0;

  /// For each prefix of the needle, the length of its longest suffix that is a prefix as well.
  std::vector<std::size_t> borders_;
  /// Ring of the offsets at which the last characters begin, as many as the needle has.
  std::vector<std::size_t> begins_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_TEXT_TEXT_SEARCH_H_
