// Texts of any bytes: UTF-8, and names in messages.
#ifndef PLATFORM_EXPANDER_COMMON_TEXT_H_
#define PLATFORM_EXPANDER_COMMON_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace zephin::expander {

/// Length in bytes of the UTF-8 character at `index`, 0 if it is not valid.
std::size_t Utf8Length(std::string_view text, std::size_t index);

/// The first 1024 bytes of a name for a message: every byte of what could break the line, control a
/// terminal or change the direction of text is written as "\x0a", and so is what is not UTF-8.
std::string OneLine(std::string_view name);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_COMMON_TEXT_H_
