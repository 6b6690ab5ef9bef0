// The path on disk for an entry's name. Names that could lead out of the target folder are refused
// here, before anything is made.
#ifndef PLATFORM_EXPANDER_ZIP_ENTRY_NAME_H_
#define PLATFORM_EXPANDER_ZIP_ENTRY_NAME_H_

#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace zephin::expander {

/// What separates the folders in an archive's names.
enum class Separator { Slash, Backslash };

/// A name as it is stored in an archive.
struct GivenName {
  std::string_view stored;
  /// The archive declares the bytes to be UTF-8.
  bool utf8 = false;
  /// A UTF-8 name from an extra field, which replaces `stored`.
  std::optional<std::string_view> unicode;
  Separator separator = Separator::Slash;
};

struct CleanName {
  /// Parts joined by single slashes, none of them "." or "..", no slash at either end; empty for
  /// the target folder itself.
  std::string_view path;
  /// The name ends in a slash.
  bool folder = false;
  /// Why the name is refused, a fixed text; nil if it is not. Then `path` is empty.
  const char* refusal = nullptr;
};

/// Decodes and checks a name. Bytes that are valid UTF-8 are kept, declared or not; others are read
/// as code page 437 unless UTF-8 is declared. `path` points into the given name or into a text that
/// is added to `texts`.
CleanName CleanEntryName(const GivenName& name, std::deque<std::string>& texts);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_ENTRY_NAME_H_
