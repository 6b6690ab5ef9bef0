#ifndef SETUP_BUNDLE_FILES_H_
#define SETUP_BUNDLE_FILES_H_

#include <cstdint>
#include <span>

#include "platform/framework/string.h"

/// Names of the files of a setup. All lie in the bundle's Contents/Resources, but for the further
/// pieces of a split payload, which lie in the folder that holds the bundle.
namespace zephin {

inline constexpr const char* kDataFile = "Data";          ///< Outer record, scrambled.
inline constexpr const char* kTextDataFile = "TextData";  ///< Inner record, plain.
inline constexpr const char* kPayloadFile = "Data2";      ///< Payload in one file, scrambled.

/// Pieces of a split payload, joined with nothing between them: Data#1, Data#2, ... and Data#End.
inline constexpr const char* kPieceStem = "Data#";
inline constexpr const char* kFirstPieceFile = "Data#1";  ///< The only one in the bundle.
inline constexpr const char* kLastPieceFile = "Data#End";

// The scrambled form of bytes, in which records and payloads lie in a bundle so that they are not
// recognised and opened. It is no encryption: there is no key.
//
// Bytes at even positions are the same in both forms; a scrambled one at an odd position is the
// plain one plus 1, modulo 256. For instance 41 42 43 FF scrambles to 41 43 43 00.

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

#endif  // SETUP_BUNDLE_FILES_H_
