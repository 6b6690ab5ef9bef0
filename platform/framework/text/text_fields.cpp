#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/framework/text.h"
#include "platform/framework/text/text_search.h"

namespace zephin {
namespace {

/// Divides a text at its separators, from left to right. The text must outlive this object.
class FieldWalk {
 public:
  FieldWalk(const String& text, const String& separator)
      : bytes_(text.View()), search_(text, separator) {}

  /// The next field; nothing after the last one.
  std::optional<std::string_view> Next() {
    if (ended_) {
      return std::nullopt;
    }
    const std::size_t begin = begin_;
    const auto match = search_.FindFrom(begin);
    if (!match) {
      ended_ = true;
      return bytes_.substr(begin);
    }
    // The match may be longer or shorter than the separator: letter case changes lengths.
    begin_ = match->end;
    return bytes_.substr(begin, match->begin - begin);
  }

 private:
  std::string_view bytes_;
  TextSearch search_;
  std::size_t begin_ = 0;
  bool ended_ = false;
};

}  // namespace

String NthField(const String& text, const String& separator, std::int64_t index) {
  FieldWalk walk(text, separator);
  std::optional<std::string_view> field;
  // An index below 1 gives the empty text, as does one beyond the last field.
  for (std::int64_t i = 0; i < index; ++i) {
    field = walk.Next();
    if (!field) {
      break;
    }
  }
  return {std::string(field.value_or("")), text.DeclaredEncoding()};
}

std::int64_t CountFields(const String& text, const String& separator) {
  FieldWalk walk(text, separator);
  std::int64_t count = 0;
  while (walk.Next()) {
    ++count;
  }
  return count;
}

Array<String> Split(const String& text, const String& separator) {
  std::vector<String> fields;
  // One walk of the text; NthField in a loop would read it anew for each field.
  if (!text.IsEmpty()) {
    FieldWalk walk(text, separator);
    while (const auto field = walk.Next()) {
      fields.emplace_back(std::string(*field), text.DeclaredEncoding());
    }
  }
  return Array<String>(std::move(fields));
}

}  // namespace zephin
