#ifndef SETUP_SCRAMBLING_H_
#define SETUP_SCRAMBLING_H_

#include <cstdint>
#include <span>

#include "platform/framework/string.h"

namespace zephin {

/// The scrambled form of bytes, in which records and payloads lie in a bundle so that they are not
/// recognised and opened. It is no encryption: there is no key.
///
/// Bytes at even positions are the same in both forms; a scrambled one at an odd position is the
/// plain one plus 1, modulo 256. For instance 41 42 43 FF scrambles to 41 43 43 00.

/// Scrambles a block in place. `position` is that of its first byte in the whole, from 0.
void ScrambleBytes(std::span<char> block, std::uint64_t position);
/// The inverse of ScrambleBytes.
void UnscrambleBytes(std::span<char> block, std::uint64_t position);

namespace ViewConst {

/// Replaces a whole text by its plain form, without encoding. An empty one stays empty.
void DecryptStr(String& text);

/// The scrambled form of a whole text, without encoding.
String Encrypt(const String& text);

}  // namespace ViewConst

}  // namespace zephin

#endif  // SETUP_SCRAMBLING_H_
