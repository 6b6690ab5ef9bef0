#ifndef SETUP_SCRAMBLING_BYTES_H_
#define SETUP_SCRAMBLING_BYTES_H_

#include <cstdint>
#include <span>

namespace zephin {

/// The form of a byte: as a program reads it, or as it lies in a bundle, where archives and records
/// are kept from being recognised and opened. It is no encryption: there is no key.
///
/// Bytes at even positions are the same in both forms; a scrambled one at an odd position is the
/// plain one plus 1, modulo 256. For instance 41 42 43 FF scrambles to 41 43 43 00.

/// Scrambles a block in place. `position` is that of its first byte in the whole, from 0.
void ScrambleBytes(std::span<char> block, std::uint64_t position);
/// The way back.
void UnscrambleBytes(std::span<char> block, std::uint64_t position);

}  // namespace zephin

#endif  // SETUP_SCRAMBLING_BYTES_H_
