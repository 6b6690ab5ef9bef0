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

/// Where a needle was found, in bytes of the searched text. The text there may be longer or shorter
/// than the needle, since forms of a letter differ in size.
struct TextMatch {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// Looks for one needle in one text, ignoring letter case, any number of times. The time of a whole
/// walk through a text grows with the text and not with the needle. The text must outlive the
/// search; the needle need not.
class TextSearch {
 public:
  TextSearch(const String& haystack, const String& needle);

  /// The first match at or after `offset`, where a character begins or the text ends. An empty
  /// needle is never found.
  std::optional<TextMatch> FindFrom(std::size_t offset);

 private:
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
  /// The needle's folded characters.
  std::vector<std::uint32_t> needle_;
  /// The needle in folded bytes of the searched text, for the methods that go by bytes.
  std::string needleBytes_;
  /// Whether characters beyond ASCII of the searched text may be forms of the needle's letters.
  bool hasFormsBeyondAscii_ = false;

  /// Folded bytes of the searched text from `blockBegin_` on.
  std::string block_;
  std::size_t blockBegin_ = 0;
  std::size_t blockSize_ = 0;

  /// For each start of the needle the length of its longest end that the needle begins with too.
  std::vector<std::size_t> borders_;
  /// Where the last characters read begin, as many as the needle has, in turn.
  std::vector<std::size_t> begins_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_TEXT_TEXT_SEARCH_H_
