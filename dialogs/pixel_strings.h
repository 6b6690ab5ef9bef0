#ifndef DIALOGS_PIXEL_STRINGS_H_
#define DIALOGS_PIXEL_STRINGS_H_

#include <cstdint>
#include <span>

#include "platform/framework/picture.h"
#include "platform/framework/ref.h"
#include "platform/framework/string.h"

/// Pictures and long texts that travel in the setup record as hexadecimal digits.
///
/// A pixel string has six digits for each pixel (red, green, blue; capitals; high digit first), row
/// by row from the top, with no header. A run `X[n]` stands for n digits X, wherever it falls. For
/// instance "F[8]0[14]F[2]" is "FFFFFFFF00000000000000FF": white and red above black and blue.
namespace zephin::ViewConst {

/// A new picture of that size in pixels; digits beyond its last pixel are passed over. Nil for an
/// empty text, and, after a message about memory, for a size that can't be, too few digits, a run
/// without its digit or bracket, or runs that make more than 50,000,000 digits. A wrong digit only
/// gives a wrong colour.
Ref<Picture> PixelStringToPicture(std::int64_t width, std::int64_t height,
                                  const String& pixelString);

/// Writes the runs out, in place. Raises OutOfMemoryException, with the text as it was, for a text
/// that isn't a pixel string or has more than 50,000,000 digits.
void PixelStringExpand(String& text);

/// Decodes `count` bytes from 2 * `count` digits; both blocks must be that long. Nothing checks a
/// digit: a small letter gives a value above 15, of which the byte keeps the low eight bits.
void MemoryBlockHexToByte(std::span<const char> hexBlock, std::span<char> byteBlock,
                          std::int64_t count);

/// The place where a big-endian processor would swap the bytes of each 16-bit unit. Does nothing on
/// the others.
void MemoryBlockByteSwitchPPC(std::span<char> block, std::int64_t count);

/// The UTF-8 form of a text stored as UTF-16 in digits, low byte first. An odd last digit is
/// dropped. With `flag` false the text itself.
String UnicodeFromHex(const String& text, bool flag);

}  // namespace zephin::ViewConst

#endif  // DIALOGS_PIXEL_STRINGS_H_
