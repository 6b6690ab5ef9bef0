#ifndef DIALOGS_PIXEL_STRINGS_H_
#define DIALOGS_PIXEL_STRINGS_H_

#include <cstdint>

#include "platform/framework/picture.h"
#include "platform/framework/ref.h"
#include "platform/framework/string.h"

/// Pictures that travel in the setup record as hexadecimal digits.
///
/// A pixel string has six digits for each pixel (red, green, blue; capitals; high digit first), row
/// by row from the top, with no header. A run `X[n]` is n digits X, at any digit of a pixel. For
/// instance "F[8]0[14]F[2]" is "FFFFFFFF00000000000000FF": white and red above black and blue.
namespace zephin::ViewConst {

/// A new picture of that size in pixels; digits beyond its last pixel are ignored. Nil for an empty
/// text. Nil also, after a message about memory, for an impossible size, too few digits, a run
/// without its digit or bracket, or more than kMostPixelDigits digits. A wrong digit only gives a
/// wrong colour.
Ref<Picture> PixelStringToPicture(std::int64_t width, std::int64_t height,
                                  const String& pixelString);

/// Writes the runs out, in place. Raises OutOfMemoryException, with the text as it was, for a text
/// that isn't a pixel string or has more than kMostPixelDigits digits.
void PixelStringExpand(String& text);

}  // namespace zephin::ViewConst

#endif  // DIALOGS_PIXEL_STRINGS_H_
