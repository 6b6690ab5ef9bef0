// Reads numbers in the byte order of the zip format, low byte first, never past the end.
#ifndef PLATFORM_EXPANDER_ZIP_LITTLE_ENDIAN_H_
#define PLATFORM_EXPANDER_ZIP_LITTLE_ENDIAN_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zephin::expander {

/// Reads fields from the front of some bytes, one after the other. A read past the end returns 0 or
/// an empty text and makes Ok() false from then on, so one check after several reads is enough.
class FieldReader {
 public:
  explicit FieldReader(std::string_view bytes) : bytes_(bytes) {}

  std::uint16_t U16() { return static_cast<std::uint16_t>(Number(2)); }
  std::uint32_t U32() { return static_cast<std::uint32_t>(Number(4)); }
  std::uint64_t U64() { return Number(8); }

  /// The next `count` bytes, valid as long as the bytes that this reads from. Empty if there are
  /// fewer; then the rest is dropped too.
  std::string_view Take(std::size_t count) {
    if (count > bytes_.size()) {
      ok_ = false;
      bytes_ = {};
      return {};
    }
    const std::string_view taken = bytes_.substr(0, count);
    bytes_.remove_prefix(count);
    return taken;
  }

  /// Number of bytes not read yet.
  std::size_t Left() const { return bytes_.size(); }
  bool Ok() const { return ok_; }

 private:
  std::uint64_t Number(std::size_t width) {
    const std::string_view digits = Take(width);
    std::uint64_t value = 0;
    for (std::size_t i = digits.size(); i > 0; --i) {
      value = value << 8U | static_cast<std::uint8_t>(digits[i - 1]);
    }
    return value;
  }

  std::string_view bytes_;
  bool ok_ = true;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_LITTLE_ENDIAN_H_
