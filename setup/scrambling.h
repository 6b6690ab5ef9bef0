#ifndef SETUP_SCRAMBLING_H_
#define SETUP_SCRAMBLING_H_

#include "platform/framework/string.h"

/// The scrambling (see scrambling_bytes.h) of whole texts of bytes, from their first byte on.
namespace zephin::ViewConst {

/// Replaces the text by its plain form, without encoding. An empty one stays empty.
void DecryptStr(String& text);

/// The scrambled form, without encoding.
String Encrypt(const String& text);

}  // namespace zephin::ViewConst

#endif  // SETUP_SCRAMBLING_H_
