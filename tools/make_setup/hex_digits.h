#ifndef TOOLS_MAKE_SETUP_HEX_DIGITS_H_
#define TOOLS_MAKE_SETUP_HEX_DIGITS_H_

#include <string>
#include <string_view>

namespace zephin::make_setup {

/// Two digits for each byte, the high one first, in capitals: the only letters that the stub reads.
inline std::string HexDigits(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string digits;
  digits.reserve(bytes.size() * 2);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    digits += kDigits[byte / 16];
    digits += kDigits[byte % 16];
  }
  return digits;
}

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_HEX_DIGITS_H_
