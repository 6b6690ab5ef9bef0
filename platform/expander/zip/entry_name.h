// What an entry's name stands for on disk. All that could lead out of the folder is refused here,
// before anything is made.
#ifndef PLATFORM_EXPANDER_ZIP_ENTRY_NAME_H_
#define PLATFORM_EXPANDER_ZIP_ENTRY_NAME_H_

#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace zephin::expander {

/// A name as an archive gives it.
struct GivenName {
  std::string_view stored;
  /// The archive says that the bytes are UTF-8.
  bool utf8 = false;
  /// A name that an extra field puts in its place; it is UTF-8.
  std::optional<std::string_view> unicode;
};

struct CleanName {
  /// Parts joined by single slashes, none of them "." or "..", no slash at either end; empty for
  /// the folder itself.
  std::string_view path;
  /// The name ends in a slash.
  bool folder = false;
  /// Why the name is refused, a fixed text; nil if it isn't.
  const char* refusal = nullptr;
};

/// Decodes and checks a name. Bytes that are valid UTF-8 stay as they are, declared or not; others
/// are taken for code page 437 unless UTF-8 is declared. `path` points into the given name or into
/// a text added to `texts`.
CleanName CleanEntryName(const GivenName& name, std::deque<std::string>& texts);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_ENTRY_NAME_H_
